#include "overlap/kernels/overlap_quality.h"

#include <cmath>
#include <cstdint>

#include "overlap/kernels/blur_rows.h"
#include "overlap/kernels/float_sum.h"

namespace jqstitching {

float BrightnessDifference(const cv::Mat& first, const cv::Mat& second, QualityScratch& scratch) {
  const int cols = second.cols;
  std::vector<unsigned char>& terms = scratch.terms[0];
  terms.resize(static_cast<size_t>(cols) + kBlurPadding);
  FloatSum sum;
  ForEachBlurredRow(first, second, scratch.blur,
                    [&](const unsigned char* a, const unsigned char* b) {
                      const std::uint64_t total = DifferenceRow(a, b, cols, terms.data());
                      sum.add(terms.data(), static_cast<size_t>(cols), total);
                    });
  // The area is a 32-bit integer that wraps.
  const auto area = static_cast<std::int32_t>(static_cast<std::uint32_t>(second.rows) *
                                              static_cast<std::uint32_t>(second.cols));
  return sum.value() / static_cast<float>(area);
}

float DefinitionDifference(const cv::Mat& first, const cv::Mat& second, QualityScratch& scratch) {
  // The border pixels that the margin skips are the only ones that the kernel
  // reflects.
  constexpr int kMargin = 5;
  const int begin = kMargin, end = second.cols - kMargin;
  FloatSum sums[2];
  int counts[2] = {0, 0};
  for (auto& terms : scratch.terms) terms.resize(static_cast<size_t>(second.cols) + kBlurPadding);
  if (begin < end) {
    for (int r = kMargin; r < second.rows - kMargin; ++r) {
      for (int p = 0; p < 2; ++p) {
        const cv::Mat& picture = p == 0 ? first : second;
        unsigned char* terms = scratch.terms[p].data();
        const StrongResponses strong =
            EdgeRow(picture.ptr(r - 1), picture.ptr(r), picture.ptr(r + 1), begin, end, terms);
        // Weak responses are stored as 0, which changes no sum.
        sums[p].add(terms + begin, static_cast<size_t>(end - begin), strong.sum);
        counts[p] += strong.count;
      }
    }
  }
  return std::fabs(sums[0].value() / static_cast<float>(counts[0]) -
                   sums[1].value() / static_cast<float>(counts[1]));
}

}  // namespace jqstitching
