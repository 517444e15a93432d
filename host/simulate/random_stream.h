#ifndef JQHOST_SIMULATE_RANDOM_STREAM_H
#define JQHOST_SIMULATE_RANDOM_STREAM_H

#include <cstdint>

namespace jqhost {

/// A splitmix64 generator with integer helpers. The standard distributions are
/// not used because their results differ between standard libraries; a seed
/// gives the same numbers everywhere.
class RandomStream {
 public:
  explicit RandomStream(std::uint64_t seed) : m_state(seed) {}

  /// A stream of its own for one purpose and one item (a frame, a cell), so that
  /// switching one effect on does not change the others.
  RandomStream(std::uint64_t seed, std::uint64_t purpose, std::uint64_t item)
      : m_state(Scramble(Scramble(Scramble(seed) ^ purpose) ^ item)) {}

  std::uint64_t Next() {
    m_state += 0x9e3779b97f4a7c15U;
    return Finish(m_state);
  }

  /// Uniform in [low, high], both inclusive.
  int Between(int low, int high) {
    const std::uint64_t span =
        static_cast<std::uint64_t>(static_cast<std::int64_t>(high) - low) + 1U;
    return static_cast<int>(low + static_cast<std::int64_t>(((Next() >> 32) * span) >> 32));
  }

  /// Uniform in [0, 1), a multiple of 2^-32 (exact in a double).
  double Unit() { return static_cast<double>(Next() >> 32) * (1.0 / 4294967296.0); }

  /// Close to normal: the sum of four 16-bit uniforms, centred. Its standard
  /// deviation is `kBellDeviation`, its ends lie at 3.46 deviations.
  std::int32_t Bell() {
    const std::uint64_t bits = Next();
    const std::uint64_t sum =
        (bits & 0xffffU) + ((bits >> 16) & 0xffffU) + ((bits >> 32) & 0xffffU) + (bits >> 48);
    return static_cast<std::int32_t>(sum) - 2 * 65535;
  }
  /// sqrt(4 * (65536^2 - 1) / 12)
  static constexpr double kBellDeviation = 37837.2270;

  /// One step of splitmix64 as a hash.
  static std::uint64_t Scramble(std::uint64_t value) { return Finish(value + 0x9e3779b97f4a7c15U); }

 private:
  static std::uint64_t Finish(std::uint64_t z) {
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9U;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebU;
    return z ^ (z >> 31);
  }

  std::uint64_t m_state;
};

/// The purposes that have a stream of their own.
enum StreamPurpose : std::uint64_t {
  kStreamTexture = 1,
  kStreamFibre,
  kStreamCell,
  kStreamWalk,
  kStreamJump,
  kStreamExposure,
  kStreamNoise
};

}  // namespace jqhost

#endif  // JQHOST_SIMULATE_RANDOM_STREAM_H
