#include "picture/filter_rounding.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <opencv2/imgproc.hpp>

#include "cpu/fused.h"
#include "picture/reflect.h"

namespace jqstitching {
namespace {

float AddTap(float sum, float tap, float sample, bool fused) {
  return fused ? std::fma(tap, sample, sum) : sum + tap * sample;
}

// One column pass, sample by sample.
template <class T>
cv::Mat PlainPass(const cv::Mat& picture, const cv::Mat& kernel, bool fused) {
  const int reach = kernel.rows / 2;
  cv::Mat out(picture.size(), picture.type());
  for (int r = 0; r < picture.rows; ++r) {
    for (int c = 0; c < picture.cols; ++c) {
      float sum = 0;
      for (int k = 0; k < kernel.rows; ++k) {
        const T sample = picture.at<T>(Reflect(r + k - reach, picture.rows), c);
        sum = AddTap(sum, static_cast<float>(kernel.at<double>(k)), static_cast<float>(sample),
                     fused);
      }
      out.at<T>(r, c) = cv::saturate_cast<T>(sum);
    }
  }
  return out;
}

template <class T>
bool Agrees(const cv::Mat& picture, const cv::Mat& kernel, bool fused) {
  cv::Mat down, across, turned = picture.t();
  cv::filter2D(picture, down, -1, kernel, cv::Point(-1, -1), 0, cv::BORDER_REFLECT_101);
  cv::filter2D(turned, across, -1, kernel.t(), cv::Point(-1, -1), 0, cv::BORDER_REFLECT_101);
  const cv::Mat plain = PlainPass<T>(picture, kernel, fused);
  const cv::Mat back = across.t();
  for (const cv::Mat* out : {static_cast<const cv::Mat*>(&down), &back}) {
    for (int r = 0; r < plain.rows; ++r) {
      const size_t bytes = static_cast<size_t>(plain.cols) * plain.elemSize();
      if (std::memcmp(out->ptr(r), plain.ptr(r), bytes) != 0) return false;
    }
  }
  return true;
}

std::uint32_t Next(std::uint32_t& state) {
  state = state * 1664525u + 1013904223u;
  return state >> 8;
}

// Five-row columns on which the two roundings give different bytes, with others
// between them.
cv::Mat TellingBytes(const cv::Mat& kernel) {
  constexpr int kWanted = 40, kTries = 400000;
  std::uint32_t state = 7;
  cv::Mat columns(5, 2 * kWanted, CV_8U, cv::Scalar(0));
  int found = 0;
  for (int n = 0; n < kTries && found < kWanted; ++n) {
    unsigned char sample[5];
    float fused = 0, separate = 0;
    for (int k = 0; k < 5; ++k) {
      sample[k] = static_cast<unsigned char>(Next(state) & 255);
      const auto tap = static_cast<float>(kernel.at<double>(k));
      fused = AddTap(fused, tap, sample[k], true);
      separate = AddTap(separate, tap, sample[k], false);
    }
    if (cvRound(fused) == cvRound(separate)) continue;
    for (int k = 0; k < 5; ++k) columns.at<unsigned char>(k, 2 * found) = sample[k];
    ++found;
  }
  return columns;
}

FilterRounding FindOut() {
  const cv::Mat nine = cv::getGaussianKernel(9, 8.0, CV_64F);
  const cv::Mat five = cv::getGaussianKernel(5, 1.0, CV_64F);
  std::uint32_t state = 1;
  // Wider than a vector and not a multiple of one, in both directions.
  cv::Mat products(53, 61, CV_32F);
  for (int i = 0; i < products.rows * products.cols; ++i) {
    const auto a = Next(state) & 255, b = Next(state) & 255;
    products.at<float>(i / products.cols, i % products.cols) = static_cast<float>(a * b);
  }
  const cv::Mat bytes = TellingBytes(five);
  for (const bool fused : {true, false}) {
    if (Agrees<float>(products, nine, fused) && Agrees<unsigned char>(bytes, five, fused)) {
      return fused ? FilterRounding::kFused : FilterRounding::kSeparate;
    }
  }
  return FilterRounding::kUnknown;
}

}  // namespace

FilterRounding LibraryFilterRounding() {
  if (cv::useOptimized()) {
    static const FilterRounding optimized = FindOut();
    return optimized;
  }
  static const FilterRounding plain = FindOut();
  return plain;
}

std::optional<bool> FollowableRounding() {
  const FilterRounding rounding = LibraryFilterRounding();
  const bool fused = rounding == FilterRounding::kFused;
  if (rounding == FilterRounding::kUnknown || (fused && !cpu::HasFused())) return std::nullopt;
  return fused;
}

}  // namespace jqstitching
