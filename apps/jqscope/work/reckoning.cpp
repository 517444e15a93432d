#include "work/reckoning.h"

#include <opencv2/imgproc.hpp>

namespace jqscope {
namespace {

constexpr int kWidth = 160;
// Share of the energy in the peak; unrelated frames stay well below.
constexpr double kClear = 0.1;
// Grey levels, as a standard deviation; an even view tells nothing.
constexpr double kLeastContrast = 1.0;

}  // namespace

cv::Point2d Reckoning::Step(const cv::Mat& frame) {
  cv::Mat grey, small;
  if (frame.channels() == 1) {
    grey = frame;
  } else {
    cv::cvtColor(frame, grey, frame.channels() == 4 ? cv::COLOR_BGRA2GRAY : cv::COLOR_BGR2GRAY);
  }
  const int width = std::min(kWidth, grey.cols);
  const int height = std::max(1, grey.rows * width / grey.cols);
  cv::resize(grey, small, cv::Size(width, height), 0, 0, cv::INTER_AREA);
  cv::Scalar mean, spread;
  cv::meanStdDev(small, mean, spread);
  if (spread[0] < kLeastContrast) small.release();
  small.convertTo(small, CV_32F);
  cv::Point2d step;
  if (!small.empty() && m_before.size() == small.size() && std::min(width, height) >= 16) {
    cv::Mat window;
    cv::createHanningWindow(window, small.size(), CV_32F);
    double clear = 0;
    const cv::Point2d shift = cv::phaseCorrelate(small, m_before, window, &clear);
    if (clear >= kClear) {
      step = cv::Point2d(shift.x * grey.cols / width, shift.y * grey.rows / height);
    }
  }
  m_before = small;
  return step;
}

}  // namespace jqscope
