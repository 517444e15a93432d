#ifndef JQ_TESTS_SUPPORT_ENGINE_PAIR_H
#define JQ_TESTS_SUPPORT_ENGINE_PAIR_H

#include <gtest/gtest.h>

#include <string>

#include "jqstitchingalgorithm.h"
#include "reference/algorithm.h"
#include "support/compare.h"
#include "support/outcome.h"
#include "support/random_source.h"

/// The library's engine and its twin with the same tuning values.
struct EnginePair {
  JQStitchingAlgorithm library;
  reference::Algorithm twin;

  EnginePair() {
    // The constructors leave these unset.
    Both([](auto& engine) {
      engine.m_nFlagThreshold = -8;
      engine.m_fBrightThreshold = -9.0f;
      engine.m_fDefinitionThreshold = -10.0f;
    });
  }
  /// Calls `action(engine)` for both.
  template <class Action>
  void Both(Action action) {
    action(library);
    action(twin);
  }
  /// Levels from -1 to `highestLevel`, budgets from negative to 100.
  void RandomParameters(RandomSource& random, int lowestLevel, int highestLevel) {
    const int level = random.Int(lowestLevel, highestLevel);
    const int budget = random.OneIn(3) ? 8 : random.Int(-10, 100);
    const int mode = random.OneIn(2) ? 0 : random.Int(-1, 1);
    const int presets = random.Int(0, 1);
    Both([&](auto& engine) { engine.SetParameter(level, budget, mode, presets); });
  }
  ::testing::AssertionResult SameMembers() const {
    const reference::Algorithm& e = twin;
    const JQStitchingAlgorithm& a = library;
    std::string differing;
    if (a.m_nDetectLevel != e.m_nDetectLevel) differing += " m_nDetectLevel";
    if (a.m_nDownScale != e.m_nDownScale) differing += " m_nDownScale";
    if (a.m_nCornerBudget != e.m_nCornerBudget) differing += " m_nCornerBudget";
    if (a.m_nImageCols != e.m_nImageCols) differing += " m_nImageCols";
    if (a.m_nImageRows != e.m_nImageRows) differing += " m_nImageRows";
    if (a.m_nBoundCols != e.m_nBoundCols) differing += " m_nBoundCols";
    if (a.m_nBoundRows != e.m_nBoundRows) differing += " m_nBoundRows";
    if (a.m_nFlagThreshold != e.m_nFlagThreshold) differing += " m_nFlagThreshold";
    if (a.m_nFlagPreset != e.m_nFlagPreset) differing += " m_nFlagPreset";
    if (a.m_fBrightThreshold != e.m_fBrightThreshold) differing += " m_fBrightThreshold";
    if (a.m_fDefinitionThreshold != e.m_fDefinitionThreshold) {
      differing += " m_fDefinitionThreshold";
    }
    if (a.m_fBrightPreset != e.m_fBrightPreset) differing += " m_fBrightPreset";
    if (a.m_fDefinitionPreset != e.m_fDefinitionPreset) differing += " m_fDefinitionPreset";
    if (a.m_nOverlapMode != e.m_nOverlapMode) differing += " m_nOverlapMode";
    if (a.m_nUsePresets != e.m_nUsePresets) differing += " m_nUsePresets";
    if (!(a.m_stitchFlags == e.m_stitchFlags)) differing += " m_stitchFlags";
    if (differing.empty()) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "members differ:" << differing;
  }
};

#endif  // JQ_TESTS_SUPPORT_ENGINE_PAIR_H
