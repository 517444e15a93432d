#include "work/drift.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>

#include "work/likeness.h"

namespace jqscope {
namespace {

// Sides of the strips that are compared: thinner ones show too little, and the middle of
// larger ones is enough.
constexpr int kThinnest = 40, kWidest = 512;
// Correlation of the two at the shift that was found; unrelated pictures stay well below.
constexpr double kAlike = 0.6;

// The largest of the four strips of `view` beside `other`.
cv::Rect LargestStrip(const cv::Rect& view, const cv::Rect& other) {
  const cv::Rect strips[] = {
      cv::Rect(view.x, view.y, other.x - view.x, view.height),
      cv::Rect(other.br().x, view.y, view.br().x - other.br().x, view.height),
      cv::Rect(view.x, view.y, view.width, other.y - view.y),
      cv::Rect(view.x, other.br().y, view.width, view.br().y - other.br().y)};
  cv::Rect largest;
  for (const cv::Rect& strip : strips) {
    const cv::Rect inside = strip.width > 0 && strip.height > 0 ? strip & view : cv::Rect();
    if (inside.area() > largest.area()) largest = inside;
  }
  return largest;
}

cv::Rect Middle(const cv::Rect& r) {
  const cv::Size size(std::min(r.width, kWidest), std::min(r.height, kWidest));
  return cv::Rect(r.tl() + (r.br() - r.tl() - cv::Point(size)) / 2, size);
}

cv::Mat Grey(const cv::Mat& picture) {
  cv::Mat grey;
  cv::cvtColor(picture, grey, cv::COLOR_BGR2GRAY);
  grey.convertTo(grey, CV_32F);
  return grey;
}

}  // namespace

std::optional<cv::Point2d> MeasureDrift(const cv::Mat& mosaic, const cv::Mat& frame,
                                        cv::Point place, const cv::Rect& lastPlaced) {
  const cv::Rect view(place, frame.size());
  const cv::Rect strip = Middle(LargestStrip(view, lastPlaced));
  if (std::min(strip.width, strip.height) < kThinnest) return std::nullopt;
  if ((strip & cv::Rect(cv::Point(), mosaic.size())) != strip) return std::nullopt;
  const cv::Mat ground = mosaic(strip);
  cv::Mat empty;
  cv::inRange(ground, cv::Scalar::all(0), cv::Scalar::all(0), empty);
  if (cv::countNonZero(empty) > 0) return std::nullopt;
  const cv::Mat here = Grey(frame(strip - place)), there = Grey(ground);
  cv::Mat window;
  cv::createHanningWindow(window, here.size(), CV_32F);
  const cv::Point2d shift = cv::phaseCorrelate(here, there, window);
  if (!(Likeness(here, there, cv::Point(-cvRound(shift.x), -cvRound(shift.y)), kThinnest / 2) >=
        kAlike)) {
    return std::nullopt;
  }
  return shift;
}

}  // namespace jqscope
