#ifndef JQ_ENGINE_ENGINE_ACCESS_H
#define JQ_ENGINE_ENGINE_ACCESS_H

#include "engine/workspace.h"
#include "jqstitchingalgorithm.h"

namespace jqstitching {

/// The stitcher's way to its engine's scratch memory.
struct EngineAccess {
  static Workspace& workspace(JQStitchingAlgorithm& engine) { return engine.m_workspace.get(); }
};

}  // namespace jqstitching

#endif  // JQ_ENGINE_ENGINE_ACCESS_H
