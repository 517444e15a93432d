#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "cpu/fused.h"
#include "cpu/level.h"

namespace {

using jqstitching::cpu::Active;
using jqstitching::cpu::Force;
using jqstitching::cpu::FromName;
using jqstitching::cpu::Level;
using jqstitching::cpu::Name;
using jqstitching::cpu::Running;
using jqstitching::cpu::SupportedLevels;

constexpr Level kAll[] = {Level::kBaseline, Level::kSse4, Level::kAvx2,
                          Level::kAvx512,   Level::kNeon, Level::kSve};

bool IsSupported(Level level) {
  const std::vector<Level> levels = SupportedLevels();
  return std::find(levels.begin(), levels.end(), level) != levels.end();
}

TEST(CpuLevel, NamesAreThoseDocumented) {
  std::string names;
  for (const Level level : kAll) {
    names += std::string(Name(level)) + " ";
    EXPECT_EQ(FromName(Name(level)), level);
  }
  EXPECT_EQ(names, "baseline sse4 avx2 avx512 neon sve ");
  EXPECT_EQ(FromName(""), std::nullopt);
  EXPECT_EQ(FromName("AVX2"), std::nullopt);
}

TEST(CpuLevel, EachFamilyHasItsOwn) {
  ASSERT_FALSE(SupportedLevels().empty());
#if defined(__aarch64__)
  EXPECT_EQ(SupportedLevels().front(), Level::kNeon);
  EXPECT_FALSE(IsSupported(Level::kSse4));
#elif defined(__x86_64__)
  EXPECT_FALSE(IsSupported(Level::kNeon) || IsSupported(Level::kSve));
#if !defined(__SSE4_1__)
  EXPECT_EQ(SupportedLevels().front(), Level::kBaseline);
#endif
#endif
}

// The code itself tells where it runs.
TEST(CpuLevel, AForcedLevelReallyRuns) {
  for (const Level level : kAll) {
    const Level before = Running();
    const bool supported = IsSupported(level);
    EXPECT_EQ(Force(level), supported) << Name(level);
    EXPECT_EQ(Running(), supported ? level : before) << Name(level);
    EXPECT_EQ(Active(), Running());
    if (!supported) continue;
    const bool fused = level != Level::kBaseline && level != Level::kSse4;
    EXPECT_EQ(jqstitching::cpu::HasFused(), fused) << Name(level);
  }
  Force(std::nullopt);
  EXPECT_EQ(Running(), SupportedLevels().back());
}

// In a child process, whose standard error is compared. Twice, to be told once.
void UseNamed(const char* name, Level expected) {
  setenv("JQ_STITCHING_CPU_LEVEL", name, 1);
  Force(std::nullopt);
  Force(std::nullopt);
  std::exit(Running() == expected ? 0 : 1);
}

TEST(CpuLevelDeathTest, ANamedLevelIsUsedInSilence) {
  for (const Level level : SupportedLevels()) {
    EXPECT_EXIT(UseNamed(Name(level), level), ::testing::ExitedWithCode(0), "^$") << Name(level);
  }
}

TEST(CpuLevelDeathTest, AnUnknownNameIsToldOnceAndIgnored) {
  EXPECT_EXIT(UseNamed("avx3", SupportedLevels().back()), ::testing::ExitedWithCode(0),
              "^JQ_STITCHING_CPU_LEVEL=avx3 is ignored: no such level; this machine has[^\n]*\n$");
}

TEST(CpuLevelDeathTest, AnUnsupportedLevelIsToldOnceAndIgnored) {
  for (const Level level : kAll) {
    if (IsSupported(level)) continue;
    EXPECT_EXIT(UseNamed(Name(level), SupportedLevels().back()), ::testing::ExitedWithCode(0),
                "^JQ_STITCHING_CPU_LEVEL=[a-z0-9]+ is ignored: not supported here; this machine "
                "has[^\n]*\n$");
  }
}

}  // namespace
