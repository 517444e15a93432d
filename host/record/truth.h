#ifndef JQHOST_RECORD_TRUTH_H
#define JQHOST_RECORD_TRUTH_H

#include <opencv2/core.hpp>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/verdict/frame_result.h"

namespace jqhost {

/// Where frames really lie: the top-left corner of each, in full-size pixels.
class Truth {
 public:
  /// Reads lines of "file,x,y" (the header may call the first column "frame" or
  /// "number"). Raises `InputError` with the line that is wrong.
  /// @param what the file is called in such a text
  static Truth Read(const std::string& path, const std::string& what = "truth");

  /// By file name, else by the frame's number in its source. False if unknown.
  bool Find(const FrameResult& frame, cv::Point2d& corner) const;

 private:
  std::unordered_map<std::string, cv::Point2d> m_byName;
  std::unordered_map<int, cv::Point2d> m_byNumber;
};

/// Distance of a placed frame from its true place, in full-size pixels.
struct PositionError {
  std::size_t frame = 0;       ///< index into the frames
  double neighbour = -1.0;     ///< measured from the frame placed before; -1: there is none
  double absolute = 0.0;       ///< measured from the first placed frame
  double neighbourAxis = 0.0;  ///< the larger component of the neighbour's
};

struct TruthComparison {
  std::vector<PositionError> errors;  ///< one per placed frame that the truth knows
  int unknown = 0;                    ///< placed frames that it does not know
  double neighbourMedian = 0.0, neighbourMaximum = 0.0;
  double neighbourAxisMaximum = 0.0;
  double absoluteMedian = 0.0, absoluteMaximum = 0.0;
};

/// @param scale full-size pixels per pixel of the working scale, x and y
TruthComparison CompareWithTruth(const std::vector<FrameResult>& frames, const Truth& truth,
                                 cv::Point2d scale);

}  // namespace jqhost

#endif  // JQHOST_RECORD_TRUTH_H
