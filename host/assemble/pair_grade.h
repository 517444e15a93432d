#ifndef JQHOST_ASSEMBLE_PAIR_GRADE_H
#define JQHOST_ASSEMBLE_PAIR_GRADE_H

#include "host/assemble/assembly.h"
#include "host/assemble/link.h"

namespace jqhost {

/// Fewer matches than this are not looked at any further: of unlike frames that many agree
/// by chance.
constexpr int kMatchesWorthALook = 6;

/// What a measured pair is worth by itself.
///
/// - Sound: at least 11 matches, a shift of at most 90 % of the frame along both axes (the
///   bounds of a live run), and no doubt about it.
/// - Weak: no doubt about it, but outside these bounds; or within them and unsupported (its
///   frames are too faint for the correlation), with no other shift that agrees better.
/// - Doubtful: everything else that was looked at.
/// @param frame size at the working scale
LinkGrade GradePair(const FramePair& pair, cv::Size frame);

/// Why a pair that is neither used nor thrown out does not count.
PairState WhyUnused(const FramePair& pair, cv::Size frame);

}  // namespace jqhost

#endif  // JQHOST_ASSEMBLE_PAIR_GRADE_H
