#ifndef JQ_TESTS_FUZZ_STITCHER_INVARIANTS_H
#define JQ_TESTS_FUZZ_STITCHER_INVARIANTS_H

#include "jqimagestitching.h"

/// What holds between any two calls: placed bounds within the mosaic and black
/// beside them, sizes that agree with the content box, no black in a frame that has
/// just been placed.
void RequireSound(const JQImageStitching& stitcher);

#endif  // JQ_TESTS_FUZZ_STITCHER_INVARIANTS_H
