#ifndef JQ_CPU_DISPATCH_H
#define JQ_CPU_DISPATCH_H

// How a kernel is written: its source defines the vector code in
// jqstitching::HWY_NAMESPACE, which hwy/foreach_target.h compiles once per level;
// after HWY_ONCE, HWY_EXPORT(Kernel) makes the table of levels and
// JQ_DISPATCH(Kernel)(arguments...) calls the entry of the level in use. The level
// is this library's own choice, so that forcing it leaves other users of the
// vector library in the process alone.
//
// The baseline is the vector library's scalar target: it lacks the operations that
// move data between lanes, so vector bodies stand under
// #if HWY_TARGET != HWY_SCALAR and the baseline runs the tail, which has the same
// operations in the same order. hwy/highway.h must be included by the kernel's
// source itself: it is read once per level.

#include <hwy/highway.h>
#include <hwy/targets.h>

namespace jqstitching::cpu {
const hwy::ChosenTarget& Chosen();
}  // namespace jqstitching::cpu

#if HWY_IDE || ((HWY_TARGETS & (HWY_TARGETS - 1)) == 0)
#define JQ_DISPATCH(KERNEL) HWY_STATIC_DISPATCH(KERNEL)
#else
#define JQ_DISPATCH(KERNEL) (*(HWY_DISPATCH_TABLE(KERNEL)[::jqstitching::cpu::Chosen().GetIndex()]))
#endif

#endif  // JQ_CPU_DISPATCH_H
