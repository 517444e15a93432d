#include "overlap/kernels/blur.h"

#include <opencv2/imgproc.hpp>

#include "overlap/kernels/blur_rows.h"
#include "picture/filter_rounding.h"
#include "picture/reflect.h"

namespace jqstitching {
namespace {

constexpr int kReach = kBlurTaps / 2;

using Visit = std::function<void(const unsigned char*, const unsigned char*)>;

cv::Mat BlurKernel() {
  return cv::getGaussianKernel(kBlurTaps, 1.0, CV_64F);
}

void ByLibrary(const cv::Mat& first, const cv::Mat& second, BlurScratch& scratch,
               const Visit& visit) {
  cv::Mat copies[2];
  for (int p = 0; p < 2; ++p) {
    const cv::Mat& picture = p == 0 ? first : second;
    copies[p] = scratch.copies[p].shape(picture.rows, picture.cols, CV_8UC1);
    picture.copyTo(copies[p]);
    BlurInPlace(copies[p]);
  }
  for (int r = 0; r < second.rows; ++r) visit(copies[0].ptr(r), copies[1].ptr(r));
}

// Blurs one picture row by row: the last 5 rows as floats, and one row blurred
// downwards with its reflected ends.
class RowBlur {
 public:
  RowBlur(const cv::Mat& picture, bool fused, float* memory)
      : m_picture(picture), m_fused(fused), m_width(Width(picture.cols)), m_rows(memory) {
    const cv::Mat kernel = BlurKernel();
    for (int k = 0; k < kBlurTaps; ++k) m_taps[k] = static_cast<float>(kernel.at<double>(k));
    for (int& r : m_held) r = -1;
  }

  static size_t Width(int cols) { return static_cast<size_t>(cols) + kReach + kBlurPadding; }
  static size_t Memory(int cols) { return (kBlurTaps + 1) * Width(cols); }

  void row(int r, unsigned char* out) {
    const int cols = m_picture.cols;
    const float* window[kBlurTaps];
    for (int k = 0; k < kBlurTaps; ++k) {
      window[k] = widened(Reflect(r + k - kReach, m_picture.rows));
    }
    float* down = m_rows + kBlurTaps * m_width + kReach;
    BlurDown(window, m_taps, cols, m_fused, down);
    for (int k = 1; k <= kReach; ++k) {
      down[-k] = down[Reflect(-k, cols)];
      down[cols - 1 + k] = down[Reflect(cols - 1 + k, cols)];
    }
    BlurAcross(down, m_taps, cols, m_fused, out);
  }

 private:
  // Rows within reach of each other have different slots.
  const float* widened(int r) {
    float* slot = m_rows + static_cast<size_t>(r % kBlurTaps) * m_width;
    if (m_held[r % kBlurTaps] != r) {
      WidenRow(m_picture.ptr(r), m_picture.cols, slot);
      m_held[r % kBlurTaps] = r;
    }
    return slot;
  }

  const cv::Mat& m_picture;
  const bool m_fused;
  const size_t m_width;
  float* const m_rows;
  float m_taps[kBlurTaps];
  int m_held[kBlurTaps];
};

}  // namespace

void BlurInPlace(cv::Mat& image) {
  const cv::Mat column = BlurKernel();
  const cv::Mat row = column.t();
  for (const cv::Mat* kernel : {&column, &row}) {
    cv::filter2D(image, image, image.depth(), *kernel, cv::Point(-1, -1), 0,
                 cv::BORDER_REFLECT_101);
  }
}

void ForEachBlurredRow(const cv::Mat& first, const cv::Mat& second, BlurScratch& scratch,
                       const Visit& visit) {
  const std::optional<bool> fused = FollowableRounding();
  if (!fused) {
    ByLibrary(first, second, scratch, visit);
    return;
  }
  const size_t ofFirst = RowBlur::Memory(first.cols), ofSecond = RowBlur::Memory(second.cols);
  scratch.rows.resize(ofFirst + ofSecond);
  scratch.blurred[0].resize(static_cast<size_t>(first.cols) + kBlurPadding);
  scratch.blurred[1].resize(static_cast<size_t>(second.cols) + kBlurPadding);
  RowBlur blurs[2] = {RowBlur(first, *fused, scratch.rows.data()),
                      RowBlur(second, *fused, scratch.rows.data() + ofFirst)};
  for (int r = 0; r < second.rows; ++r) {
    for (int p = 0; p < 2; ++p) blurs[p].row(r, scratch.blurred[p].data());
    visit(scratch.blurred[0].data(), scratch.blurred[1].data());
  }
}

}  // namespace jqstitching
