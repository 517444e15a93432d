#ifndef JQ_CPU_LEVEL_H
#define JQ_CPU_LEVEL_H

#include <optional>
#include <string>
#include <vector>

namespace jqstitching::cpu {

/// Sets of vector instructions that the kernels are compiled for, weakest first for
/// each family of processors. Every level gives the same results, bit for bit. x86-64
/// has the first four; 64-bit ARM has NEON, and SVE (any length of vector, SVE2
/// included) where the processor and the compiler have it.
enum class Level { kBaseline, kSse4, kAvx2, kAvx512, kNeon, kSve };

/// "baseline", "sse4", "avx2", "avx512", "neon", "sve".
const char* Name(Level level);
std::optional<Level> FromName(const std::string& name);

/// The levels that this machine and this build can run, weakest first. Never empty;
/// a build for a certain processor starts at that processor's level.
std::vector<Level> SupportedLevels();

/// The level in use: the one forced below, or the one that the environment
/// variable JQ_STITCHING_CPU_LEVEL named when the first kernel ran, or the best
/// supported. An unknown or unsupported name is ignored, and that is told once on
/// standard error: the only text that the library itself prints.
Level Active();

/// Forces a supported level for the whole process (tests and benches); an empty
/// argument returns to the default. False, and no change, when the level is not
/// supported. Not to be called while a kernel runs.
bool Force(std::optional<Level> level);

/// The level that vector code really runs at, as the code itself tells.
Level Running();

}  // namespace jqstitching::cpu

#endif  // JQ_CPU_LEVEL_H
