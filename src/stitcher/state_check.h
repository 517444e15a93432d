#ifndef JQ_STITCHER_STATE_CHECK_H
#define JQ_STITCHER_STATE_CHECK_H

#include "jqstitchingstate.h"

namespace jqstitching {

/// Raises `cv::Exception`, with what is wrong, for a state that no live run can have: one
/// whose pictures, sizes and positions do not fit each other. A state that passes is safe
/// to go on from, whatever it holds.
void CheckState(const JQStitchingState& state);

}  // namespace jqstitching

#endif  // JQ_STITCHER_STATE_CHECK_H
