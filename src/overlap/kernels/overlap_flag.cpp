#include "overlap/kernels/overlap_flag.h"

bool jqstitching::IsFit(int offsetX, int offsetY, const OverlapLimits& limits,
                        const cv::Mat& firstHalf, const cv::Mat& secondHalf,
                        QualityScratch& scratch) {
  return offsetY < limits.rows && offsetX < limits.cols &&
         BrightnessDifference(firstHalf, secondHalf, scratch) < limits.bright &&
         DefinitionDifference(firstHalf, secondHalf, scratch) < limits.definition;
}
