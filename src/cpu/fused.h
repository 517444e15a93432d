#ifndef JQ_CPU_FUSED_H
#define JQ_CPU_FUSED_H

namespace jqstitching::cpu {

/// Whether the vector level in use has the fused multiply-add of one rounding.
bool HasFused();

}  // namespace jqstitching::cpu

#endif  // JQ_CPU_FUSED_H
