// Included once per vector level, by the sources of kernels; hence the guard that
// toggles.
#if defined(JQ_CPU_VECTORS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef JQ_CPU_VECTORS_INL_H
#undef JQ_CPU_VECTORS_INL_H
#else
#define JQ_CPU_VECTORS_INL_H
#endif

#include <hwy/highway.h>

#include "cpu/vector_bytes.h"

HWY_BEFORE_NAMESPACE();
namespace jqstitching {
namespace HWY_NAMESPACE {

/// The vectors that kernels use at this level: whole registers, of kVectorBytes at
/// the most. Where the length of a register is known at run time only, vectors can be
/// neither members nor elements of arrays, so no kernel has them there.
template <class T>
using Vectors = hwy::HWY_NAMESPACE::CappedTag<T, cpu::kVectorBytes / sizeof(T)>;

}  // namespace HWY_NAMESPACE
}  // namespace jqstitching
HWY_AFTER_NAMESPACE();

#endif
