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
/// 3. A link of fewer than 40 matches that no loop confirms is no better than a weak one from
///    here on where its ends overlap others by enough to be looked at and these say nothing,
///    or where its frames agree much less than those of the other links do. Weak links that
///    agree much less count only where two of them join islands.
/// 4. Weak links are used that are part of a loop that closes, and of none that does not. (A
///    loop with a link shorter than a tenth of a frame says the same thing twice.)
/// 5. Islands are joined by weak links that others confirm (`IslandJoiner`).
/// 6. Weak and doubtful links that agree with the places so found are used as well.
///
/// So nothing is placed by a link that stands alone unless it is sound and nothing else could
/// be asked, and a pattern that repeats itself is placed by others or not at all. The order of
/// links that are equally strong decides nothing but which of them is blamed first.
/// @param frame size of a frame
Places HoldTogether(std::size_t frames, cv::Size frame, std::vector<Link>& links,
                    const LookAtSide& look = {});

}  // namespace jqhost

#endif  // JQHOST_ASSEMBLE_HOLD_TOGETHER_H
