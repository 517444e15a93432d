#ifndef JQSTITCH_INSPECT_PAIR_VERDICT_H
#define JQSTITCH_INSPECT_PAIR_VERDICT_H

#include "inspect/pair_analysis.h"

namespace jqstitch {

/// Applies the stitcher's rule of acceptance to the measurements and writes
/// `accepted` and `verdict`.
void DecideVerdict(PairAnalysis& pair);

}  // namespace jqstitch

#endif  // JQSTITCH_INSPECT_PAIR_VERDICT_H
