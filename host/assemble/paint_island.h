#ifndef JQHOST_ASSEMBLE_PAINT_ISLAND_H
#define JQHOST_ASSEMBLE_PAINT_ISLAND_H

#include <functional>
#include <opencv2/core.hpp>
#include <vector>

namespace jqhost {

/// The order in which frames are painted, as indices into `corners`: the topmost (of these
/// the leftmost) first, then breadth first those that lie on one that is painted already,
/// again by row and column. It does not depend on the order of the list, except among frames
/// at one place; frames that touch no other come last.
/// @param frame size of all
std::vector<std::size_t> PaintingOrder(const std::vector<cv::Point>& corners, cv::Size frame);

/// Fuses frames into one picture with the engine's blend, in `PaintingOrder`, on a canvas
/// that is large enough from the start, so that the mosaic never grows.
/// @param frame size at the working scale
/// @param read gives a frame of the list as the stitcher takes it in, in full size; called on
///   another thread, while the one before is painted. An empty matrix leaves it out.
/// @param goOn asked before each frame with the number painted; false ends the work
/// @return the picture of what was painted, cut to the bounds of `corners`
cv::Mat PaintIsland(const std::vector<cv::Point>& corners, cv::Size frame, int detectLevel,
                    const std::function<cv::Mat(std::size_t)>& read,
                    const std::function<bool(std::size_t)>& goOn);

}  // namespace jqhost

#endif  // JQHOST_ASSEMBLE_PAINT_ISLAND_H
