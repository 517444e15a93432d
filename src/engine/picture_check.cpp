#include "engine/picture_check.h"

void jqstitching::CheckPicture(const cv::Mat& picture) {
  if (picture.dims > 2) {
    CV_Error(cv::Error::StsBadSize,
             cv::format("a picture has two dimensions, not %d", picture.dims));
  }
}

void jqstitching::CheckPictures(const cv::Mat& first, const cv::Mat& second) {
  CheckPicture(first);
  CheckPicture(second);
}
