#ifndef JQ_CPU_VECTOR_BYTES_H
#define JQ_CPU_VECTOR_BYTES_H

#include <cstddef>

namespace jqstitching::cpu {

/// Bytes of the longest vector that a kernel uses. Row layouts leave room for
/// vectors of this size at the ends of a row. Processors whose registers are longer
/// (up to 256 bytes with SVE) use the first part of each.
constexpr std::size_t kVectorBytes = 64;

}  // namespace jqstitching::cpu

#endif  // JQ_CPU_VECTOR_BYTES_H
