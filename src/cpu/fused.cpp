#include "cpu/fused.h"

// clang-format off: the included file is this one, once per level
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "cpu/fused.cpp"
#include <hwy/foreach_target.h>
// clang-format on
#include <hwy/highway.h>

#include "cpu/dispatch.h"
#include "cpu/fused-inl.h"

HWY_BEFORE_NAMESPACE();
namespace jqstitching {
namespace HWY_NAMESPACE {

bool HasFusedKernel() {
  return kNativeFma;
}

}  // namespace HWY_NAMESPACE
}  // namespace jqstitching
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace jqstitching {
HWY_EXPORT(HasFusedKernel);

bool cpu::HasFused() {
  return JQ_DISPATCH(HasFusedKernel)();
}

}  // namespace jqstitching
#endif  // HWY_ONCE
