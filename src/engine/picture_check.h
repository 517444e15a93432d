#ifndef JQ_ENGINE_PICTURE_CHECK_H
#define JQ_ENGINE_PICTURE_CHECK_H

#include <opencv2/core.hpp>

namespace jqstitching {

/// Raises `cv::Exception` for a matrix of more than two dimensions, whose counts of
/// rows and columns are -1. Every public method asks this first.
void CheckPicture(const cv::Mat& picture);
void CheckPictures(const cv::Mat& first, const cv::Mat& second);

}  // namespace jqstitching

#endif  // JQ_ENGINE_PICTURE_CHECK_H
