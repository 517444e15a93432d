#include "registration/kernels/zero_samples.h"

#include <algorithm>
#include <cstdint>

// clang-format off: the included file is this one, once per level
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "registration/kernels/zero_samples.cpp"
#include <hwy/foreach_target.h>
// clang-format on
#include <hwy/highway.h>
// Above: once per level. Below: once.
#include "cpu/dispatch.h"
#include "cpu/vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace jqstitching {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

void LiftZeroKernel(std::uint8_t* row, size_t bytes, std::uint8_t lifted) {
  const Vectors<std::uint8_t> d;
  const size_t lanes = hn::Lanes(d);
  const auto zero = hn::Zero(d);
  const auto value = hn::Set(d, lifted);
  size_t i = 0;
  for (; i + lanes <= bytes; i += lanes) {
    const auto samples = hn::LoadU(d, row + i);
    const auto empty = hn::Eq(samples, zero);
    // Most frames have few zeros: a row that has none is not written.
    if (!hn::AllFalse(d, empty)) hn::StoreU(hn::IfThenElse(empty, value, samples), d, row + i);
  }
  for (; i < bytes; ++i) {
    if (row[i] == 0) row[i] = lifted;
  }
}

}  // namespace HWY_NAMESPACE
}  // namespace jqstitching
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace jqstitching {

HWY_EXPORT(LiftZeroKernel);

void LiftZeroSamples(cv::Mat& image) {
  const bool single = image.channels() == 1;
  const size_t visited = static_cast<size_t>(image.cols) * (single ? 1 : 3);
  const size_t bytes = std::min(visited, static_cast<size_t>(image.cols) * image.elemSize());
  const auto lift = JQ_DISPATCH(LiftZeroKernel);
  for (int r = 0; r < image.rows; ++r) lift(image.ptr(r), bytes, single ? 1 : 2);
}

GreyAndHalf LiftToGreyAndHalf(cv::Mat& picture, ScratchPicture& greyMemory,
                              ScratchPicture& halfMemory) {
  const auto lift = JQ_DISPATCH(LiftZeroKernel);
  const size_t bytes = static_cast<size_t>(picture.cols) * 3;
  const cv::Mat& lifted = picture;
  return ToGreyAndHalf(lifted, greyMemory, halfMemory,
                       [&](int r) { lift(picture.ptr(r), bytes, 2); });
}

}  // namespace jqstitching
#endif  // HWY_ONCE
