#include "overlap/blur.h"

#include <opencv2/imgproc.hpp>

namespace jqstitching {

void BlurInPlace(cv::Mat& image) {
  const cv::Mat column = cv::getGaussianKernel(5, 1.0, CV_64F);
  const cv::Mat row = column.t();
  for (const cv::Mat& kernel : {column, row}) {
    cv::filter2D(image, image, image.depth(), kernel, cv::Point(-1, -1), 0, cv::BORDER_REFLECT_101);
  }
}

}  // namespace jqstitching
