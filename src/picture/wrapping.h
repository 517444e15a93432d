#ifndef JQ_PICTURE_WRAPPING_H
#define JQ_PICTURE_WRAPPING_H

#include <cstdint>

namespace jqstitching {

/// Arithmetic of 32-bit coordinates that wraps, for values that a host can set to the
/// limits of the type. The plain operators are undefined where the true value does not
/// fit.
inline std::int32_t WrappingSum(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}
inline std::int32_t WrappingSum(std::int32_t a, std::int32_t b, std::int32_t c) {
  return WrappingSum(WrappingSum(a, b), c);
}
inline std::int32_t WrappingDifference(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}
inline std::int32_t WrappingProduct(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}

}  // namespace jqstitching

#endif  // JQ_PICTURE_WRAPPING_H
