#ifndef JQ_BLEND_KERNELS_FUSE_ROW_H
#define JQ_BLEND_KERNELS_FUSE_ROW_H

#include <cstddef>
#include <cstdint>

namespace jqstitching {

// One row of fused samples, in integers and truncated:
//
//     frame[i] = ((255 - w) * frame[i] + w * old[i]) / divisor,  w = weight[i],
//
// with the divisor 255 for colour and 256 for grey. `block`, when not null, gets the
// same samples; it may be `old`, and otherwise overlaps neither row. No byte past
// the `count` samples of a row is touched; `weight` has one entry per sample.

void FuseColourRow(const std::uint8_t* old, const std::uint8_t* weight, std::uint8_t* frame,
                   std::uint8_t* block, std::size_t count);
void FuseGreyRow(const std::uint8_t* old, const std::uint8_t* weight, std::uint8_t* frame,
                 std::uint8_t* block, std::size_t count);

}  // namespace jqstitching

#endif  // JQ_BLEND_KERNELS_FUSE_ROW_H
