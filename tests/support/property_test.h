#ifndef JQ_TESTS_SUPPORT_PROPERTY_TEST_H
#define JQ_TESTS_SUPPORT_PROPERTY_TEST_H

#include <gtest/gtest.h>

#include <cstdio>
#include <opencv2/core.hpp>
#include <string>

#include "picture/library_rounding.h"
#include "support/cpu_levels.h"
#include "support/random_source.h"

/// Whether the build checks every access, so that exhaustive tests take samples.
inline bool RunsSlowly() {
#if defined(__SANITIZE_ADDRESS__) || !defined(__OPTIMIZE__)
  return true;
#else
  return false;
#endif
}

/// Fixture of the tests that compare the library with its plain twin on random
/// input. The parameter is the name of the vector level to run at.
class PropertyTest : public ::testing::TestWithParam<std::string> {
 protected:
  PropertyTest() : m_level(GetParam()) {}

  /// Calls `round(random)` as often as asked for, each time with a source of its
  /// own seed, and stops at the first failing round.
  template <class Round>
  void Repeat(int usualRounds, Round round) {
    const std::uint64_t first = TestSeed();
    const int rounds = TestRounds(usualRounds);
    std::printf("first seed %llu, %d rounds\n", static_cast<unsigned long long>(first), rounds);
    for (int k = 0; k < rounds; ++k) {
      const std::uint64_t seed = first + static_cast<std::uint64_t>(k);
      SCOPED_TRACE("repeat with JQ_TEST_SEED=" + std::to_string(seed) + " JQ_TEST_ROUNDS=1");
      RandomSource random(seed);
      // The image library rounds its filters as its own fast paths do; with those
      // off it rounds otherwise, and the library has to follow.
      cv::setUseOptimized(!random.OneIn(5));
      // Where our kernels cannot follow it, the library's own calls are the way out.
      jqstitching::ForceLibraryCalls(random.OneIn(5));
      round(random);
      if (HasFailure()) break;
    }
    cv::setUseOptimized(true);
    jqstitching::ForceLibraryCalls(false);
  }

 private:
  ScopedCpuLevel m_level;
};

/// Once per level for every property test of one file.
#define JQ_AT_EVERY_CPU_LEVEL(Suite)                                       \
  INSTANTIATE_TEST_SUITE_P(Level, Suite, ::testing::ValuesIn(CpuLevels()), \
                           [](const auto& level) { return level.param; })

#endif  // JQ_TESTS_SUPPORT_PROPERTY_TEST_H
