#ifndef JQ_ENGINE_WORKSPACE_H
#define JQ_ENGINE_WORKSPACE_H

#include "blend/fusion_scratch.h"
#include "engine/current_frame.h"
#include "overlap/overlap_quality.h"
#include "picture/scratch.h"
#include "registration/corners.h"
#include "registration/features.h"

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
