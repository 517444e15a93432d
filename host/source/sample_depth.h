#ifndef JQHOST_SOURCE_SAMPLE_DEPTH_H
#define JQHOST_SOURCE_SAMPLE_DEPTH_H

#include <opencv2/core.hpp>
#include <string>

namespace jqhost {

// Cameras of 10, 12 or 14 bits store their samples in the low bits of 16. The
// stitcher takes the high byte of a 16-bit sample, which would leave a 12-bit
// picture 16 times too dark; so frames are brought to 8 bits before.

/// 0 stands for "find out from the first frame with 16-bit samples".
constexpr int kFindDepth = 0;

/// 8, 10, 12, 14 or 16.
bool IsSampleDepth(int bits);

/// Of a `CV_16U` picture.
int LargestSample(const cv::Mat& picture);
/// The smallest depth that holds this sample.
int SmallestDepth(int largestSample);

/// A `CV_16U` picture as `CV_8U`: a sample of `bits` bits keeps its 8 highest
/// (value >> (bits - 8), rounded down, as a record's high byte is taken); larger
/// samples become 255.
cv::Mat ScaleToEightBits(const cv::Mat& picture, int bits);

/// What a run found out about the samples of its frames.
struct SampleSummary {
  bool wide = false;        ///< whether any frame had 16-bit samples
  int bits = 8;             ///< then their significant bits
  bool found = false;       ///< whether these were found out, not asked for
  int saturatedFrames = 0;  ///< frames with samples above these bits, cut off there
  bool grey = false;        ///< whether all frames had one channel
};

/// Why a picture cannot be a frame because of its samples: "it has 32-bit float
/// samples ...". Empty for 8 and 16 bits.
std::string WhyNotSamples(const cv::Mat& picture);

}  // namespace jqhost

#endif  // JQHOST_SOURCE_SAMPLE_DEPTH_H
