#ifndef JQSCOPE_WORK_FINDER_H
#define JQSCOPE_WORK_FINDER_H

#include <atomic>
#include <functional>
#include <opencv2/core.hpp>
#include <optional>
#include <thread>
#include <vector>

#include "host/run/stitch_settings.h"

namespace jqscope {

/// Ground that was placed earlier.
struct KnownPlace {
  cv::Point place;  ///< of the block, from the first frame's corner
  cv::Mat block;    ///< of a frame's size, blue, green, red
};

/// The first of the places, in their order, that the frame clearly overlaps: enough matches
/// agree on one shift, and the two look alike where they then overlap. The engine's own
/// registration measures it.
std::optional<cv::Point> FindPlace(const cv::Mat& frame, const std::vector<KnownPlace>& places,
                                   const jqhost::StitchSettings& settings);

/// Looks for a lost frame on a thread of its own, one frame at a time.
class Finder {
 public:
  using Found = std::function<void(const std::optional<cv::Point>&)>;

  /// Waits for the search in hand.
  ~Finder();
  bool IsBusy() const { return m_busy; }
  /// Does nothing while busy. @param found called on the thread of the search
  void Search(cv::Mat frame, std::vector<KnownPlace> places, const jqhost::StitchSettings& settings,
              Found found);

 private:
  std::atomic<bool> m_busy{false};
  std::thread m_thread;
};

}  // namespace jqscope

#endif  // JQSCOPE_WORK_FINDER_H
