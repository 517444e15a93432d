#include "engine/picture_check.h"
#include "jqstitchingalgorithm.h"
#include "registration/kernels/descriptor.h"

void JQStitchingAlgorithm::NoRotaFeatureDescriber(cv::Mat image, std::vector<cv::Point> corners,
                                                  cv::Mat& descriptors) {
  jqstitching::CheckPicture(image);
  descriptors = jqstitching::DescribeCorners(image, corners);
}
