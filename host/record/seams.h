#ifndef JQHOST_RECORD_SEAMS_H
#define JQHOST_RECORD_SEAMS_H

#include <string>

#include "host/record/run_record.h"

namespace jqhost {

/// The seams of a picture as an SVG path in picture pixels: the lines along which an
/// older and a newer frame have equal weight, so that one fades into the other there.
///
/// Computed from the places of the frames alone, as the fusion weighs them: by the
/// distance to the nearest place that the older frames do not cover, and to the newer
/// frame's border. Worked out on a grid of at most 1000 cells a side, so the lines are
/// exact to about a thousandth of the picture.
std::string SeamPath(const RunRecord& record);

}  // namespace jqhost

#endif  // JQHOST_RECORD_SEAMS_H
