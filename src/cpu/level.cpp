#include "cpu/level.h"

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

struct Entry {
  Level level;
  const char* name;
  long long targets;  // this level's instructions in the vector library's terms
};

constexpr Entry kEntries[] = {
    {Level::kBaseline, "baseline", HWY_STATIC_TARGET},
    {Level::kSse4, "sse4", HWY_SSE4},
    {Level::kAvx2, "avx2", HWY_AVX2},
    {Level::kAvx512, "avx512", HWY_AVX3},
};

bool IsSupported(const Entry& entry) {
  if (entry.level == Level::kBaseline) return true;
  return (hwy::SupportedTargets() & entry.targets & (HWY_TARGETS)) != 0;
}

Level Default() {
  const char* name = std::getenv("JQ_STITCHING_CPU_LEVEL");
  const std::optional<Level> wanted = name != nullptr ? FromName(name) : std::nullopt;
  Level best = Level::kBaseline;
  for (const Level level : SupportedLevels()) {
    if (wanted == level) return level;
    best = level;
  }
  return best;
}

struct Choice {
  hwy::ChosenTarget target;
  Level level;
  Choice() { set(Default()); }
  void set(Level wanted) {
    for (const Entry& entry : kEntries) {
      if (entry.level == wanted) target.Update(entry.targets);
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
    if (entry.targets == target) return entry.level;
  }
  return Level::kBaseline;
}

const hwy::ChosenTarget& Chosen() {
  return TheChoice().target;
}

}  // namespace cpu
}  // namespace jqstitching
#endif  // HWY_ONCE
