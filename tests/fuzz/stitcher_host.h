#ifndef JQ_TESTS_FUZZ_STITCHER_HOST_H
#define JQ_TESTS_FUZZ_STITCHER_HOST_H

#include <algorithm>
#include <new>
#include <vector>

#include "fuzz_input.h"
#include "jqimagestitching.h"
#include "stitcher_snapshot.h"

/// The host of one run of calls, and what it knows.
struct Host {
  FuzzInput in;
  JQImageStitching stitcher;
  int mode, level, budget;
  cv::Point camera;
  cv::Size frameSize;
  // What was seen before each step that can be taken back, oldest first.
  std::vector<StitcherSnapshot> seen = {};
  int undoDepth = 0;
};

/// Drops what lies beyond the depth.
inline void Shorten(Host& host) {
  const auto depth = static_cast<std::size_t>(std::max(host.undoDepth, 0));
  while (host.seen.size() > depth) host.seen.erase(host.seen.begin());
}

/// Raised by a call: what the headers announce, and nothing else.
template <class Call>
bool Raises(Call&& call) {
  try {
    call();
    return false;
  } catch (const cv::Exception&) {
    return true;
  } catch (const std::bad_alloc&) {
    return true;
  }
}

#endif  // JQ_TESTS_FUZZ_STITCHER_HOST_H
