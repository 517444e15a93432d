#ifndef JQHOST_ASSEMBLE_CONCLUSION_H
#define JQHOST_ASSEMBLE_CONCLUSION_H

#include <vector>

#include "host/assemble/assembly.h"
#include "host/assemble/place_frames.h"

namespace jqhost {

/// Fills in what is told of the pairs, the islands and the frames, in the numbers of the
/// list, when all is decided.
///
/// Places are rounded to whole pixels in the coordinates of `places`, and moved by whole
/// pixels afterwards, so that the first frame of the list in each island lies at (0, 0) and
/// the picture does not depend on which one that is.
/// @param listed of each frame of the graph, its number in the list
/// @param pairs one for each link, in the same order, with the graph's numbers
/// @param frame size at the working scale
/// @param assembly whose `frames` are those of the list
void Conclude(const std::vector<std::size_t>& listed, const Places& places,
              const std::vector<Link>& links, std::vector<FramePair> pairs, cv::Size frame,
              Assembly& assembly);

}  // namespace jqhost

#endif  // JQHOST_ASSEMBLE_CONCLUSION_H
