#include "pair_shift.h"

#include <stdexcept>
#include <string>

#include "host/run/stitch_settings.h"
#include "host/source/image_record.h"
#include "jqframeverdict.h"
#include "jqstitchingalgorithm.h"

namespace jqpython {

bool PairShift::Found() const {
  return matches >= JQFrameVerdict::kMatchesNeeded;
}

PairShift RegisterPair(const cv::Mat& first, const cv::Mat& second) {
  const auto shape = [](const cv::Mat& frame) {
    return "(" + std::to_string(frame.rows) + ", " + std::to_string(frame.cols) + ")";
  };
  if (first.size() != second.size()) {
    throw std::invalid_argument("a and b have different heights and widths: " + shape(first) +
                                " and " + shape(second));
  }
  const jqhost::StitchSettings settings;
  JQStitchingAlgorithm engine;
  engine.SetParameter(settings.detectLevel, settings.cornerBudget, settings.overlapMode, 1);
  PairShift shift;
  engine.ImageMosaicFun(jqhost::AsTakenIn(first), jqhost::AsTakenIn(second), shift.offset.x,
                        shift.offset.y, shift.matches);
  return shift;
}

}  // namespace jqpython
