#ifndef JQHOST_ASSEMBLE_HOLD_TOGETHER_H
#define JQHOST_ASSEMBLE_HOLD_TOGETHER_H

#include <vector>

#include "host/assemble/loops.h"
#include "host/assemble/place_frames.h"

namespace jqhost {

/// Decides which links hold the frames together, and places the frames by them.
///
/// 1. Sound links are used, and those that a hint predicts.
/// 2. What breaks loops is thrown out (`ThrowOutLoopBreakers`, `PlaceConsistently`).
/// 3. Two islands are joined where two weak links or more put them in the same place within
///    `kAgreement`, and no others put them elsewhere as often. The two must look at different
///    parts of the scene: their frames lie a tenth of a frame apart at one end at least. (The
///    same frame given twice would only say the same thing twice.)
/// 4. Weak and doubtful links that agree with the places so found are used as well.
///
/// So nothing is placed by a link that stands alone unless it is sound, and a pattern that
/// repeats itself is placed by others or not at all. The order of links that are equally
/// strong decides nothing but which of them is blamed first.
/// @param frame size of a frame
Places HoldTogether(std::size_t frames, cv::Size frame, std::vector<Link>& links,
                    const LookAtSide& look = {});

}  // namespace jqhost

#endif  // JQHOST_ASSEMBLE_HOLD_TOGETHER_H
