#ifndef JQHOST_ASSEMBLE_LOOPS_H
#define JQHOST_ASSEMBLE_LOOPS_H

#include <array>
#include <vector>

#include "host/assemble/link.h"

namespace jqhost {

/// A way over three or four used links that ends where it began.
struct Loop {
  std::array<std::size_t, 4> links{};
  int length = 0;      ///< 3 or 4
  double error = 0.0;  ///< distance between its end and its beginning; 0 if all were exact

  bool Closes() const { return error <= kAgreement; }
};

/// All loops of three used links, and those of four that no used link cuts into two of
/// three. Each once, in an order that the links' order decides.
///
///     1 --- 2        Corners 1-2-3-4 are looked at when neither 1-3 nor 2-4 is a
///     |     |        used link; with one of them the two triangles say the same,
///     4 --- 3        and among many frames in one place there would be millions.
std::vector<Loop> FindLoops(std::size_t frames, const std::vector<Link>& links);

/// Throws out used links until every loop closes.
///
/// The weakest link of the loops that do not close goes first: the one of whose loops the
/// smallest share closes, (closing + 1) / (all + 2), then the one of least confidence, then
/// of fewest matches, then the later one. A link with loops that did not close, and none
/// that closes in the end, is no better than a guess although another one was blamed: it
/// goes too, unless all that were blamed had at most 0.6 of its confidence.
/// @return the number thrown out
int ThrowOutLoopBreakers(std::size_t frames, std::vector<Link>& links);

}  // namespace jqhost

#endif  // JQHOST_ASSEMBLE_LOOPS_H
