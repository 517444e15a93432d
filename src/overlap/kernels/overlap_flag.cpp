#include "overlap/kernels/overlap_flag.h"

jqstitching::OverlapFit jqstitching::TestOverlap(int offsetX, int offsetY,
                                                 const OverlapLimits& limits,
                                                 const cv::Mat& firstHalf,
                                                 const cv::Mat& secondHalf,
                                                 QualityScratch& scratch) {
  OverlapFit result;
  if (!(offsetY < limits.rows && offsetX < limits.cols)) return result;
  result.bright = BrightnessDifference(firstHalf, secondHalf, scratch);
  if (!(result.bright < limits.bright)) return result;
  result.definition = DefinitionDifference(firstHalf, secondHalf, scratch);
  result.fit = result.definition < limits.definition;
  return result;
}
