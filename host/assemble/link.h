#ifndef JQHOST_ASSEMBLE_LINK_H
#define JQHOST_ASSEMBLE_LINK_H

#include <opencv2/core.hpp>
#include <vector>

namespace jqhost {

/// What a measured pair is worth by itself.
enum class LinkGrade {
  kSound,     ///< enough matches, a shift within bounds, and nothing else fits as well
  kWeak,      ///< below these bounds, but nothing else fits as well: counts where another agrees
  kDoubtful,  ///< other shifts fit too: counts only where the places of its frames say so
  kWorthless  ///< says nothing
};

/// What became of it.
enum class LinkState { kOpen, kUsed, kThrownOut };

/// A measured pair as the graph of the frames sees it: two frames by their number and the
/// way from one to the other. The graph knows no pixels.
struct Link {
  std::size_t first = 0;
  std::size_t second = 0;
  cv::Point2d shift;  ///< of `second` from `first`, pixels
  double confidence = 0.0;
  int matches = 0;
  double agreement = 1.0;   ///< correlation of the two frames at this shift, -1 to 1
  double difference = 0.0;  ///< of the two frames where they overlap, grey levels
  LinkGrade grade = LinkGrade::kWorthless;
  bool unlike = false;    ///< its frames differ much more than those of other links do
  bool expected = false;  ///< a hint predicts this shift
  LinkState state = LinkState::kOpen;

  /// The way to the other end from this one.
  cv::Point2d From(std::size_t frame) const { return frame == first ? shift : -shift; }
  std::size_t Other(std::size_t frame) const { return frame == first ? second : first; }
};

/// Two measurements of one place agree up to this many pixels. A single pair is good to one
/// or two (lenses bend the edges of a frame), and repeating patterns are rarely finer.
constexpr double kAgreement = 3.0;

/// Of each frame, the used links that it is part of, in their order.
std::vector<std::vector<std::size_t>> UsedLinksOf(std::size_t frames,
                                                  const std::vector<Link>& links);

}  // namespace jqhost

#endif  // JQHOST_ASSEMBLE_LINK_H
