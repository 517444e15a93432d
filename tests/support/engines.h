#ifndef JQ_TESTS_SUPPORT_ENGINES_H
#define JQ_TESTS_SUPPORT_ENGINES_H

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

#include "jqstitchingalgorithm.h"
#include "reference/algorithm.h"

/// Known answers are asked of the library and of its plain twin alike, so that
/// the property tests, which compare the two, stand on a twin that is proved.
using Engines = ::testing::Types<JQStitchingAlgorithm, reference::Algorithm>;

struct EngineNames {
  template <class Engine>
  static std::string GetName(int) {
    return std::is_same<Engine, reference::Algorithm>::value ? "Twin" : "Library";
  }
};

/// Fixture of a typed test with one fresh engine.
template <class Engine>
class EngineTest : public ::testing::Test {
 protected:
  Engine engine;
};

#endif  // JQ_TESTS_SUPPORT_ENGINES_H
