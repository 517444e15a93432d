#ifndef JQ_BLEND_KERNELS_CHAMFER_STEPS_H
#define JQ_BLEND_KERNELS_CHAMFER_STEPS_H

namespace jqstitching {

// The distance mask, in single precision: every distance is a sequence of rounded
// sums of these, so a path of k steps is k additions and never one product.
constexpr float kStraightStep = 0.2f;
constexpr float kDiagonalStep = 0.3f;
/// What a pixel starts from, and so the largest distance.
constexpr float kDistanceCap = 255.0f;

}  // namespace jqstitching

#endif  // JQ_BLEND_KERNELS_CHAMFER_STEPS_H
