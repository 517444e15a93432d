#ifndef JQ_TESTS_SUPPORT_RANDOM_SOURCE_H
#define JQ_TESTS_SUPPORT_RANDOM_SOURCE_H

#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>

/// Seed of the first round of a random test: JQ_TEST_SEED, else a fresh one.
/// Round k uses seed + k, so that a failing round is repeated alone by the seed
/// that it prints and JQ_TEST_ROUNDS=1.
inline std::uint64_t TestSeed() {
  if (const char* text = std::getenv("JQ_TEST_SEED")) return std::strtoull(text, nullptr, 10);
  static const std::uint64_t fresh = std::random_device{}();
  return fresh;
}

/// Rounds of a random test: JQ_TEST_ROUNDS, else the test's own number.
inline int TestRounds(int usual) {
  if (const char* text = std::getenv("JQ_TEST_ROUNDS")) return std::atoi(text);
  return usual;
}

/// Random numbers that are the same on every platform for one seed. A compiler may
/// evaluate the arguments of a call in any order, but those in braces from left to
/// right: two draws stand in braces or in statements of their own.
class RandomSource {
 public:
  explicit RandomSource(std::uint64_t seed) : m_engine(seed) {}

  /// Uniform from the closed range.
  int Int(int low, int high) {
    const std::uint64_t span = static_cast<std::uint64_t>(std::int64_t{high} - low) + 1;
    return static_cast<int>(low + static_cast<std::int64_t>(m_engine() % span));
  }
  bool OneIn(int n) { return Int(1, n) == 1; }
  /// One to `high`, small values more often: sizes that loops treat specially.
  int Size(int high) {
    const int top = OneIn(3) ? high : OneIn(2) ? (high < 70 ? high : 70) : (high < 12 ? high : 12);
    return Int(1, top);
  }

 private:
  std::mt19937_64 m_engine;
};

#endif  // JQ_TESTS_SUPPORT_RANDOM_SOURCE_H
