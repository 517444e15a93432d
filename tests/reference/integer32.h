#ifndef JQ_TESTS_REFERENCE_INTEGER32_H
#define JQ_TESTS_REFERENCE_INTEGER32_H

#include <cstdint>

namespace reference {

// Signed 32-bit arithmetic that wraps. The plain operators of `int` are undefined
// where the true value does not fit.
inline std::int32_t Add32(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}
inline std::int32_t Sub32(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}
inline std::int32_t Mul32(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}

}  // namespace reference

#endif  // JQ_TESTS_REFERENCE_INTEGER32_H
