#ifndef JQ_TESTS_FUZZ_STITCHER_STEPS_H
#define JQ_TESTS_FUZZ_STITCHER_STEPS_H

#include "stitcher_host.h"

/// The calls that take a run back, take it up elsewhere, save, restore and bound it, each
/// with what holds after it.
void SetUndoDepth(Host& host);
void Undo(Host& host);
void Continue(Host& host);
void SaveAndRestore(Host& host);
void LimitMemory(Host& host);

#endif  // JQ_TESTS_FUZZ_STITCHER_STEPS_H
