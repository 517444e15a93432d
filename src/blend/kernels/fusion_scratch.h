#ifndef JQ_BLEND_KERNELS_FUSION_SCRATCH_H
#define JQ_BLEND_KERNELS_FUSION_SCRATCH_H

#include <cstdint>

#include "blend/kernels/distance_map.h"
#include "blend/kernels/edge_distance.h"
#include "blend/kernels/scratch_buffer.h"

namespace jqstitching {

/// Memory of the fusion, reused from frame to frame: 4 bytes a frame pixel, 8 once a
/// frame with empty pixels was fused.
struct FusionScratch {
  DistanceMap oldMap, newMap;
  EdgeDistance edge;
  ScratchBuffer<std::uint8_t> content, weights, tripled;
};

}  // namespace jqstitching

#endif  // JQ_BLEND_KERNELS_FUSION_SCRATCH_H
