#ifndef JQ_TESTS_FUZZ_FUZZ_INPUT_H
#define JQ_TESTS_FUZZ_FUZZ_INPUT_H

#include <climits>
#include <cstddef>
#include <cstdint>

/// Reads the bytes of one fuzzing input from front to back; zeros behind the end, so
/// that every input, however short, is a whole test case.
class FuzzInput {
 public:
  FuzzInput(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

  bool atEnd() const { return m_at >= m_size; }
  std::uint8_t u8() { return m_at < m_size ? m_data[m_at++] : std::uint8_t{0}; }
  std::uint16_t u16() {
    const int low = u8();
    return static_cast<std::uint16_t>(low | u8() << 8);
  }
  std::uint32_t u32() {
    const std::uint32_t low = u16();
    return low | std::uint32_t{u16()} << 16;
  }
  std::int32_t i32() { return static_cast<std::int32_t>(u32()); }
  bool oneIn(int n) { return u8() % n == 0; }
  /// From the closed range, which spans 65536 numbers at most.
  int range(int low, int high) {
    const int span = high - low + 1;
    return low + (span <= 256 ? u8() : u16()) % span;
  }
  /// Mostly a small number, now and then one at the limits of its type or any other.
  int number() {
    const int kind = u8();
    if (kind < 176) return range(-100, 155);
    if (kind < 208) return static_cast<std::int16_t>(u16());
    static const int kLimits[] = {INT_MIN,      INT_MIN + 1, INT_MIN / 2, -65536,      -32769,
                                  65535,        65536,       INT_MAX / 3, INT_MAX / 2, 1 << 30,
                                  INT_MAX - 99, INT_MAX - 1, INT_MAX};
    if (kind < 240) return kLimits[u8() % (sizeof kLimits / sizeof *kLimits)];
    return i32();
  }

 private:
  const std::uint8_t* m_data;
  std::size_t m_size;
  std::size_t m_at = 0;
};

#endif  // JQ_TESTS_FUZZ_FUZZ_INPUT_H
