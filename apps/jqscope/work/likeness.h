#ifndef JQSCOPE_WORK_LIKENESS_H
#define JQSCOPE_WORK_LIKENESS_H

#include <opencv2/core.hpp>

namespace jqscope {

/// Correlation, -1 to 1, of two pictures of one type where the second, moved so that its
/// pixel (0, 0) lies at `offset` of the first, overlaps it; 0 where fewer than `thinnest`
/// pixels a side overlap.
double Likeness(const cv::Mat& first, const cv::Mat& second, cv::Point offset, int thinnest);

}  // namespace jqscope

#endif  // JQSCOPE_WORK_LIKENESS_H
