#ifndef JQHOST_ASSEMBLE_LOOPS_H
#define JQHOST_ASSEMBLE_LOOPS_H

#include <array>
#include <functional>
#include <vector>

#include "host/assemble/link.h"

namespace jqhost {

/// What the pictures of two frames say about the place of one in the other.
enum class SideView {
  kAgrees,
  kContradicts,  ///< another place fits better
  kSaysNothing,  ///< neither, although they overlap well
  kTooFar        ///< they hardly overlap there
};

/// Looks at two frames, the one of the lower number first, with the second one placed at
/// this shift in the first.
using LookAtSide = std::function<SideView(std::size_t, std::size_t, cv::Point2d)>;

/// A way over three or four used links that ends where it began; or over two, whose ends are
/// looked at instead of a third link.
struct Loop {
  std::array<std::size_t, 4> links{};
  int length = 0;  ///< 2, 3 or 4
  /// Distance between its end and its beginning; 0 if all were exact. Of two links: 0, or
  /// infinite where the pictures contradict them.
  double error = 0.0;
  bool silent = false;  ///< of two links whose ends say nothing

  bool Closes() const { return error <= kAgreement; }
};

/// All loops of two used links whose ends are near enough to be looked at, of three, and those of
/// four that no used link cuts into two of three. Each once, in an order that the links' order
/// decides.
///
///     1 --- 2        Corners 1-2-3-4 are looked at when neither 1-3 nor 2-4 is a
///     |     |        used link; with one of them the two triangles say the same,
///     4 --- 3        and among many frames in one place there would be millions.
///
/// Two ends that have no used link may still overlap by what the two links say. Where a
/// pattern comes back elsewhere in the scene, this tells more than whether links close: a
/// whole group of frames laid over another one agrees within itself, and looks wrong there.
std::vector<Loop> FindLoops(std::size_t frames, const std::vector<Link>& links,
                            const LookAtSide& look = {});

/// Throws out used links until every loop closes.
///
/// The weakest link of the loops that do not close goes first: the one of whose loops the
/// smallest share closes, (closing + 1) / (all + 2), then the one of least confidence, then
/// of fewest matches, then the later one. A link with loops that did not close, and none
/// that closes in the end, is no better than a guess although another one was blamed: it
/// goes too, unless all that were blamed had at most 0.6 of its confidence.
/// @return the number thrown out
int ThrowOutLoopBreakers(std::size_t frames, std::vector<Link>& links, const LookAtSide& look = {});

}  // namespace jqhost

#endif  // JQHOST_ASSEMBLE_LOOPS_H
