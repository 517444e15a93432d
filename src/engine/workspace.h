#ifndef JQ_ENGINE_WORKSPACE_H
#define JQ_ENGINE_WORKSPACE_H

#include "blend/kernels/fusion_scratch.h"
#include "engine/current_frame.h"
#include "overlap/kernels/overlap_quality.h"
#include "picture/scratch.h"
#include "registration/kernels/corners.h"
#include "registration/kernels/features.h"

namespace jqstitching {

/// Scratch memory of one engine, reused from frame to frame.
struct Workspace {
  CurrentFrame current;
  ReferenceFeatures reference;
  CornerScratch corners;
  QualityScratch quality;
  FusionScratch fusion;
  ScratchPicture half, previous;
};

}  // namespace jqstitching

#endif  // JQ_ENGINE_WORKSPACE_H
