#ifndef JQ_BLEND_FUSION_SCRATCH_H
#define JQ_BLEND_FUSION_SCRATCH_H

#include <cstdint>

#include "blend/distance_map.h"
#include "blend/edge_distance.h"
#include "blend/scratch_buffer.h"

namespace jqstitching {

/// Memory of the fusion, reused from frame to frame: 4 bytes a frame pixel, 8 once a
/// frame with empty pixels was fused.
struct FusionScratch {
  DistanceMap oldMap, newMap;
  EdgeDistance edge;
  ScratchBuffer<std::uint8_t> content, weights, tripled;
};

}  // namespace jqstitching

#endif  // JQ_BLEND_FUSION_SCRATCH_H
