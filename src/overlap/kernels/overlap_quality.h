#ifndef JQ_OVERLAP_KERNELS_OVERLAP_QUALITY_H
#define JQ_OVERLAP_KERNELS_OVERLAP_QUALITY_H

#include <opencv2/core.hpp>
#include <vector>

#include "overlap/kernels/blur.h"

namespace jqstitching {

/// Working memory of the measures.
struct QualityScratch {
  BlurScratch blur;
  std::vector<unsigned char> terms[2];
  ScratchPicture rows, halves[2];
};

/// Both measures take halved grey pictures (`CV_8UC1`) of one size.

/// Mean absolute difference of the blurred pictures: a single-precision sum in
/// raster order, divided by the area. NaN for empty pictures.
float BrightnessDifference(const cv::Mat& first, const cv::Mat& second, QualityScratch& scratch);

/// Difference of the means of the responses above 10 to vertical edges, 5 pixels
/// inside the border; single-precision sums in raster order. NaN when a picture
/// has no such response.
float DefinitionDifference(const cv::Mat& first, const cv::Mat& second, QualityScratch& scratch);

}  // namespace jqstitching

#endif  // JQ_OVERLAP_KERNELS_OVERLAP_QUALITY_H
