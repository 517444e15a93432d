// Included once per vector level, by the sources of kernels that follow the image
// library's filters; hence the guard that toggles.
#if defined(JQ_CPU_FUSED_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef JQ_CPU_FUSED_INL_H
#undef JQ_CPU_FUSED_INL_H
#else
#define JQ_CPU_FUSED_INL_H
#endif

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace jqstitching {
namespace HWY_NAMESPACE {

/// Whether this level has the fused multiply-add of one rounding: AVX2, AVX-512,
/// NEON and SVE do. Elsewhere the vector library's MulAdd rounds twice.
constexpr bool kNativeFma = HWY_NATIVE_FMA != 0;

/// sum + tap * sample, with one rounding or with two.
template <bool kFused, class V>
HWY_INLINE V AddTap(V sum, V tap, V sample) {
  namespace hn = hwy::HWY_NAMESPACE;
  if constexpr (kFused) {
    return hn::MulAdd(tap, sample, sum);
  } else {
    return hn::Add(sum, hn::Mul(tap, sample));
  }
}

}  // namespace HWY_NAMESPACE
}  // namespace jqstitching
HWY_AFTER_NAMESPACE();

#endif
