#include "registration/kernels/corner_response.h"

#include <opencv2/imgproc.hpp>

#include "picture/filter_rounding.h"
#include "registration/kernels/corner_rows.h"

namespace jqstitching {
namespace {

constexpr int kReach = kTaps / 2;

cv::Mat SmoothingKernel() {
  return cv::getGaussianKernel(kTaps, 8.0, CV_64F);
}

// Whole maps, for machines whose rounding our own passes cannot follow. Their
// outermost pixels are zero: the smoothing carries them 4 pixels inwards only.
void ByLibrary(const cv::Mat& image, ResponseScratch& scratch,
               const std::function<float*(int)>& target, const ResponseVisitor& visit) {
  const int rows = image.rows, cols = image.cols;
  cv::Mat maps[kMaps];
  for (int m = 0; m < kMaps; ++m) {
    maps[m] = scratch.maps[m].shape(rows, cols, CV_32F);
    maps[m].setTo(0);
  }
  for (int r = 1; r < rows - 1; ++r) {
    float* const out[kMaps] = {maps[0].ptr<float>(r), maps[1].ptr<float>(r), maps[2].ptr<float>(r)};
    ProductsRow(image.ptr(r - 1), image.ptr(r), image.ptr(r + 1), 1, cols - 1, out);
  }
  const cv::Mat column = SmoothingKernel();
  const cv::Mat row = column.t();
  for (cv::Mat& map : maps) {
    for (const cv::Mat* kernel : {&column, &row}) {
      cv::filter2D(map, map, map.depth(), *kernel, cv::Point(-1, -1), 0.0, cv::BORDER_REFLECT_101);
    }
  }
  for (int r = kCornerMargin; r < rows - kCornerMargin; ++r) {
    float* response = target(r);
    const double sum =
        ResponseRow(maps[0].ptr<float>(r), maps[1].ptr<float>(r), maps[2].ptr<float>(r),
                    kCornerMargin, cols - kCornerMargin, response);
    visit(r, response, sum);
  }
}

void ByRows(const cv::Mat& image, bool fused, ResponseScratch& scratch,
            const std::function<float*(int)>& target, const ResponseVisitor& visit) {
  const int rows = image.rows, cols = image.cols;
  const int begin = kCornerMargin, end = cols - kCornerMargin;
  float taps[kTaps];
  const cv::Mat kernel = SmoothingKernel();
  for (int k = 0; k < kTaps; ++k) taps[k] = static_cast<float>(kernel.at<double>(k));

  // Per map: the last 10 product rows, two rows smoothed downwards, one smoothed
  // both ways.
  constexpr int kHeld = kTaps + 1, kUpper = kHeld, kLower = kHeld + 1, kSmooth = kHeld + 2;
  const size_t width = static_cast<size_t>(cols) + kRowPadding;
  scratch.rows.resize(kMaps * (kSmooth + 1) * width);
  const auto buffer = [&](int map, int slot) {
    return scratch.rows.data() + (static_cast<size_t>(map) * (kSmooth + 1) + slot) * width;
  };
  const auto products = [&](int r) {
    float* const out[kMaps] = {buffer(0, r % kHeld), buffer(1, r % kHeld), buffer(2, r % kHeld)};
    ProductsRow(image.ptr(r - 1), image.ptr(r), image.ptr(r + 1), begin - kReach, end + kReach,
                out);
  };
  const auto finish = [&](int r, int down) {
    for (int m = 0; m < kMaps; ++m) {
      SmoothAcross(buffer(m, down), taps, begin, end, fused, buffer(m, kSmooth));
    }
    float* response = target(r);
    const double sum = ResponseRow(buffer(0, kSmooth), buffer(1, kSmooth), buffer(2, kSmooth),
                                   begin, end, response);
    visit(r, response, sum);
  };
  for (int r = kCornerMargin - kReach; r < kCornerMargin + kReach; ++r) products(r);
  for (int r = kCornerMargin; r < rows - kCornerMargin; r += 2) {
    // The margin leaves rows enough below the interior for a last pair that is
    // only half needed.
    products(r + kReach);
    products(r + kReach + 1);
    for (int m = 0; m < kMaps; ++m) {
      const float* window[kHeld];
      for (int k = 0; k < kHeld; ++k) window[k] = buffer(m, (r - kReach + k) % kHeld);
      SmoothDown(window, taps, begin - kReach, end + kReach, fused, buffer(m, kUpper),
                 buffer(m, kLower));
    }
    finish(r, kUpper);
    if (r + 1 < rows - kCornerMargin) finish(r + 1, kLower);
  }
}

}  // namespace

void ForEachResponseRow(const cv::Mat& image, ResponseScratch& scratch,
                        const std::function<float*(int)>& target, const ResponseVisitor& visit) {
  if (const std::optional<bool> fused = FollowableRounding()) {
    ByRows(image, *fused, scratch, target, visit);
  } else {
    ByLibrary(image, scratch, target, visit);
  }
}

}  // namespace jqstitching
