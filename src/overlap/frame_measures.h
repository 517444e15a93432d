#ifndef JQ_OVERLAP_FRAME_MEASURES_H
#define JQ_OVERLAP_FRAME_MEASURES_H

#include <limits>

#include "registration/registration_step.h"

namespace jqstitching {

/// What judging and registering a frame found beyond the stitch record. A number that
/// was not taken is NaN.
struct FrameMeasures {
  static constexpr float kNotTaken = std::numeric_limits<float>::quiet_NaN();

  CornersFound corners;
  float bright = kNotTaken, brightLimit = kNotTaken;
  float definition = kNotTaken, definitionLimit = kNotTaken;
  float motion = kNotTaken, motionLimit = kNotTaken;
};

}  // namespace jqstitching

#endif  // JQ_OVERLAP_FRAME_MEASURES_H
