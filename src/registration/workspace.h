#ifndef JQ_REGISTRATION_WORKSPACE_H
#define JQ_REGISTRATION_WORKSPACE_H

#include "blend/fusion_scratch.h"
#include "picture/scratch.h"
#include "registration/corners.h"

namespace jqstitching {

struct Workspace {
  ScratchPicture half;
  CornerScratch corners;
  FusionScratch fusion;
};

}  // namespace jqstitching

#endif
