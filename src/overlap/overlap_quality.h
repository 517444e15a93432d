#ifndef JQ_OVERLAP_OVERLAP_QUALITY_H
#define JQ_OVERLAP_OVERLAP_QUALITY_H

#include <opencv2/core.hpp>

namespace jqstitching {

/// Grey pictures of half the size of `first`, the common ground of both measures.
struct HalvedPair {
  cv::Mat first, second;
};

/// Both pictures in grey, resized to half of `first`'s size.
HalvedPair HalvePair(const cv::Mat& first, const cv::Mat& second);

/// Mean absolute difference after a 5-tap blur, a single-precision sum in raster
/// order. NaN for empty pictures.
float BrightnessDifference(const HalvedPair& pair);

/// Difference of the means of the responses above 10 to vertical edges, 5 pixels
/// inside the border. NaN when a picture has no such response.
float DefinitionDifference(const HalvedPair& pair);

}  // namespace jqstitching

#endif  // JQ_OVERLAP_OVERLAP_QUALITY_H
