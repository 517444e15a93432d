#include "picture/filter_rounding.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <opencv2/imgproc.hpp>

#include "cpu/fused.h"
#include "picture/library_rounding.h"
#include "picture/reflect.h"
#include "picture/remembered_probe.h"

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

// Columns of five bytes whose sums under the 5-tap kernel lie so near a half that the
// two roundings give different bytes. They are rare, one in 200000 random columns, and
// were found by trying; FindOut checks that they still tell.
constexpr int kTelling = 32;
constexpr unsigned char kColumns[kTelling][5] = {
    {124, 44, 126, 103, 204},  {84, 34, 134, 56, 110},    {215, 211, 23, 86, 55},
    {78, 242, 87, 37, 20},     {16, 179, 177, 207, 112},  {237, 191, 81, 222, 149},
    {16, 114, 164, 36, 238},   {91, 109, 160, 33, 155},   {163, 221, 157, 198, 75},
    {214, 27, 143, 154, 148},  {98, 8, 183, 107, 44},     {48, 214, 179, 176, 84},
    {138, 55, 35, 193, 6},     {222, 42, 164, 108, 32},   {39, 67, 189, 60, 115},
    {46, 212, 77, 120, 182},   {161, 145, 210, 24, 35},   {50, 128, 105, 187, 84},
    {57, 3, 178, 102, 75},     {166, 187, 104, 225, 183}, {40, 202, 13, 2, 60},
    {45, 203, 254, 54, 239},   {56, 44, 140, 58, 150},    {240, 1, 132, 158, 100},
    {148, 116, 162, 103, 252}, {146, 61, 141, 43, 62},    {203, 168, 189, 32, 101},
    {53, 14, 142, 92, 157},    {174, 134, 3, 196, 206},   {196, 148, 11, 198, 200},
    {54, 28, 107, 8, 86},      {234, 37, 119, 96, 80},
};

float ColumnSum(const unsigned char* column, const cv::Mat& kernel, bool fused) {
  float sum = 0;
  for (int k = 0; k < 5; ++k) {
    sum = AddTap(sum, static_cast<float>(kernel.at<double>(k)), column[k], fused);
  }
  return sum;
}

bool ColumnsTell(const cv::Mat& kernel) {
  int telling = 0;
  for (const auto& column : kColumns) {
    const int fused = cvRound(ColumnSum(column, kernel, true));
    telling += fused != cvRound(ColumnSum(column, kernel, false)) ? 1 : 0;
  }
  return telling >= kTelling / 2;
}

// The columns side by side for the pass downwards, more than a vector of them and not
// a multiple of one.
cv::Mat SideBySide() {
  cv::Mat picture(5, 2 * kTelling + 7, CV_8U);
  for (int c = 0; c < picture.cols; ++c) {
    for (int k = 0; k < 5; ++k) picture.at<unsigned char>(k, c) = kColumns[c % kTelling][k];
  }
  return picture;
}

// One below the other for the pass across the turned picture; in each further column
// they stand one sample lower, so that they meet every place in a vector.
cv::Mat OneBelowTheOther() {
  cv::Mat picture(5 * kTelling, 5, CV_8U);
  for (int r = 0; r < picture.rows; ++r) {
    for (int c = 0; c < picture.cols; ++c) {
      const int k = (r + picture.rows - c) % picture.rows;
      picture.at<unsigned char>(r, c) = kColumns[k / 5][k % 5];
    }
  }
  return picture;
}

FilterRounding FindOut() {
  const cv::Mat nine = cv::getGaussianKernel(9, 8.0, CV_64F);
  const cv::Mat five = cv::getGaussianKernel(5, 1.0, CV_64F);
  if (!ColumnsTell(five)) return FilterRounding::kUnknown;
  std::uint32_t state = 1;
  // Wider than a vector and not a multiple of one, in both directions.
  cv::Mat products(37, 61, CV_32F);
  for (int i = 0; i < products.rows * products.cols; ++i) {
    const auto a = Next(state) & 255, b = Next(state) & 255;
    products.at<float>(i / products.cols, i % products.cols) = static_cast<float>(a * b);
  }
  const cv::Mat wide = SideBySide(), tall = OneBelowTheOther();
  for (const bool fused : {true, false}) {
    if (Agrees<float>(products, nine, fused) && Agrees<unsigned char>(wide, five, fused) &&
        Agrees<unsigned char>(tall, five, fused)) {
      return fused ? FilterRounding::kFused : FilterRounding::kSeparate;
    }
  }
  return FilterRounding::kUnknown;
}

}  // namespace

FilterRounding LibraryFilterRounding() {
  static RememberedProbe<FilterRounding> probe(FindOut);
  return probe.answer().value_or(FilterRounding::kUnknown);
}

std::optional<bool> FollowableRounding() {
  if (LibraryCallsForced()) return std::nullopt;
  const FilterRounding rounding = LibraryFilterRounding();
  const bool fused = rounding == FilterRounding::kFused;
  if (rounding == FilterRounding::kUnknown || (fused && !cpu::HasFused())) return std::nullopt;
  return fused;
}

}  // namespace jqstitching
