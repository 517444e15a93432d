#ifndef JQPYTHON_PAIR_SHIFT_H
#define JQPYTHON_PAIR_SHIFT_H

#include <opencv2/core.hpp>

namespace jqpython {

/// How one frame lies against another.
struct PairShift {
  cv::Point offset;  ///< where the second frame's first pixel lies in the first frame
  int matches = 0;   ///< match pairs that agree with it
  bool Found() const;
};

/// Registers two frames of one size, 8 bits, 1 or 3 channels, as a live run at detection
/// level 1 registers a frame. `std::invalid_argument` where the sizes differ.
PairShift RegisterPair(const cv::Mat& first, const cv::Mat& second);

}  // namespace jqpython

#endif  // JQPYTHON_PAIR_SHIFT_H
