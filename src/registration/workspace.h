#ifndef JQ_REGISTRATION_WORKSPACE_H
#define JQ_REGISTRATION_WORKSPACE_H

#include "blend/fusion_scratch.h"

namespace jqstitching {

/// Scratch memory of one engine, reused from frame to frame.
struct Workspace {
  FusionScratch fusion;
};

}  // namespace jqstitching

#endif  // JQ_REGISTRATION_WORKSPACE_H
