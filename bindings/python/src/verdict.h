#ifndef JQPYTHON_VERDICT_H
#define JQPYTHON_VERDICT_H

#include <opencv2/core.hpp>
#include <optional>
#include <string>

#include "host/verdict/frame_result.h"

namespace jqpython {

/// What became of a frame, as Python sees it. Lengths are pixels of the working scale.
struct Verdict {
  bool placed = false;
  std::string cause;
  std::string sentence;
  std::optional<cv::Point> offset;    ///< against the reference; where it was measured
  std::optional<cv::Point> position;  ///< corner in the picture; of a frame placed there
  int matches = 0;
  std::optional<double> shiftShare;  ///< of the field of view; where it was measured
  std::optional<std::string> name;   ///< of a file
  std::optional<bool> doubtful;      ///< where the doubt was looked into
};

/// All but position, name and doubt.
Verdict MakeVerdict(const jqhost::FrameResult& frame, int detectLevel);

}  // namespace jqpython

#endif  // JQPYTHON_VERDICT_H
