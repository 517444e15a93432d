#ifndef JQ_TESTS_FUZZ_SPOILED_STATE_H
#define JQ_TESTS_FUZZ_SPOILED_STATE_H

#include "fuzz_input.h"
#include "jqstitchingstate.h"

/// Changes one number or picture of a saved state, as the input says, to what most
/// likely does not fit the rest.
void SpoilState(FuzzInput& in, JQStitchingState& state);

#endif  // JQ_TESTS_FUZZ_SPOILED_STATE_H
