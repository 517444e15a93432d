#include "overlap/working_scale.h"

#include <opencv2/imgproc.hpp>

void jqstitching::ShrinkFrames(std::int32_t detectLevel, cv::Mat& reference, cv::Mat& previous,
                               cv::Mat& current) {
  if (detectLevel == 1) return;
  const cv::Size size(current.cols / detectLevel, current.rows / detectLevel);
  for (cv::Mat* image : {&current, &previous, &reference}) {
    cv::resize(*image, *image, size, 0, 0, cv::INTER_LINEAR);
  }
}
