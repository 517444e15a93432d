#include "cpu/level.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>

// clang-format off: the included file is this one, once per level
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "cpu/level.cpp"
#include <hwy/foreach_target.h>
// clang-format on
#include <hwy/highway.h>
// Above: once per level. Below: once.
#include "cpu/dispatch.h"

HWY_BEFORE_NAMESPACE();
namespace jqstitching {
namespace HWY_NAMESPACE {

long long RunningTarget() {
  return HWY_TARGET;
}

}  // namespace HWY_NAMESPACE
}  // namespace jqstitching
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace jqstitching {
HWY_EXPORT(RunningTarget);
namespace cpu {
namespace {

// The sets of instructions that count as one level, in the vector library's terms.
// A better set has a lower bit, and of several the best supported one is run.
#ifdef HWY_ALL_NEON
constexpr long long kNeonTargets = HWY_ALL_NEON;
#else
constexpr long long kNeonTargets = HWY_NEON;
#endif
constexpr long long kSveTargets = HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128;
constexpr long long kAvx512Targets = HWY_AVX2 - 1;  // AVX-512 and all beyond it
constexpr long long kNamedTargets =
    HWY_SSE4 | HWY_AVX2 | kAvx512Targets | kNeonTargets | kSveTargets;

struct Entry {
  Level level;
  const char* name;
  long long targets;
};

constexpr Entry kEntries[] = {
    // What the compiler was told to assume, where that is none of the levels below.
    {Level::kBaseline, "baseline", HWY_STATIC_TARGET & ~kNamedTargets},
    {Level::kSse4, "sse4", HWY_SSE4},
    {Level::kAvx2, "avx2", HWY_AVX2},
    {Level::kAvx512, "avx512", kAvx512Targets},
    {Level::kNeon, "neon", kNeonTargets},
    {Level::kSve, "sve", kSveTargets},
};

bool IsSupported(const Entry& entry) {
  const long long runnable = hwy::SupportedTargets() | HWY_STATIC_TARGET;
  return (runnable & entry.targets & (HWY_TARGETS)) != 0;
}

// A library prints nothing; but a name with a slip in it would silently measure or
// test another level than the one asked for.
void TellIgnored(const char* name) {
  static std::atomic<bool> told{false};
  if (told.exchange(true)) return;
  std::string levels;
  for (const Level level : SupportedLevels()) levels += std::string(" ") + Name(level);
  std::fprintf(stderr, "JQ_STITCHING_CPU_LEVEL=%s is ignored: %s; this machine has%s\n", name,
               FromName(name) ? "not supported here" : "no such level", levels.c_str());
}

Level Default() {
  const std::vector<Level> levels = SupportedLevels();
  const char* name = std::getenv("JQ_STITCHING_CPU_LEVEL");
  if (name == nullptr) return levels.back();
  const std::optional<Level> wanted = FromName(name);
  for (const Level level : levels) {
    if (wanted == level) return level;
  }
  TellIgnored(name);
  return levels.back();
}

struct Choice {
  hwy::ChosenTarget target;
  Level level;
  Choice() { set(Default()); }
  void set(Level wanted) {
    for (const Entry& entry : kEntries) {
      if (entry.level != wanted) continue;
      target.Update((hwy::SupportedTargets() | HWY_STATIC_TARGET) & entry.targets & (HWY_TARGETS));
    }
    level = wanted;
  }
};

Choice& TheChoice() {
  static Choice choice;
  return choice;
}

}  // namespace

const char* Name(Level level) {
  for (const Entry& entry : kEntries) {
    if (entry.level == level) return entry.name;
  }
  return "";
}

std::optional<Level> FromName(const std::string& name) {
  for (const Entry& entry : kEntries) {
    if (name == entry.name) return entry.level;
  }
  return std::nullopt;
}

std::vector<Level> SupportedLevels() {
  std::vector<Level> levels;
  for (const Entry& entry : kEntries) {
    if (IsSupported(entry)) levels.push_back(entry.level);
  }
  return levels;
}

Level Active() {
  return TheChoice().level;
}

bool Force(std::optional<Level> level) {
  if (!level) {
    TheChoice().set(Default());
    return true;
  }
  for (const Level supported : SupportedLevels()) {
    if (supported != *level) continue;
    TheChoice().set(*level);
    return true;
  }
  return false;
}

Level Running() {
  const long long target = JQ_DISPATCH(RunningTarget)();
  for (const Entry& entry : kEntries) {
    if ((entry.targets & target) != 0) return entry.level;
  }
  return Level::kBaseline;
}

const hwy::ChosenTarget& Chosen() {
  return TheChoice().target;
}

}  // namespace cpu
}  // namespace jqstitching
#endif  // HWY_ONCE
