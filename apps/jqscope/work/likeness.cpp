#include "work/likeness.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>

namespace jqscope {

double Likeness(const cv::Mat& first, const cv::Mat& second, cv::Point offset, int thinnest) {
  const cv::Rect common = cv::Rect(cv::Point(), first.size()) & cv::Rect(offset, second.size());
  if (std::min(common.width, common.height) < thinnest) return 0;
  cv::Mat likeness;
  cv::matchTemplate(first(common), second(common - offset), likeness, cv::TM_CCOEFF_NORMED);
  return static_cast<double>(likeness.at<float>(0, 0));
}

}  // namespace jqscope
