#include <opencv2/imgproc.hpp>

#include "engine/picture_check.h"
#include "engine/workspace.h"
#include "jqstitchingalgorithm.h"
#include "overlap/part_quality.h"
#include "picture/grey.h"

namespace {

using jqstitching::QualityScratch;

// Grey pictures of half of `first`'s size, the common ground of both measures.
struct HalvedPair {
  cv::Mat first, second;
};

cv::Mat HalveTo(const cv::Mat& picture, const cv::Size& half, QualityScratch& scratch, int slot) {
  const cv::Size own(picture.cols / 2, picture.rows / 2);
  if (jqstitching::IsPlainPicture(picture) && own == half) {
    return jqstitching::ToHalf(picture, scratch.rows, scratch.halves[slot]);
  }
  cv::Mat grey = picture;
  if (picture.channels() > 1) cv::cvtColor(picture, grey, cv::COLOR_RGB2GRAY);
  cv::resize(grey, grey, half, 0, 0, cv::INTER_LINEAR);
  return grey;
}

HalvedPair HalvePair(const cv::Mat& first, const cv::Mat& second, QualityScratch& scratch) {
  jqstitching::CheckPictures(first, second);
  const cv::Size half(first.cols / 2, first.rows / 2);
  HalvedPair pair{HalveTo(first, half, scratch, 0), HalveTo(second, half, scratch, 1)};
  if (pair.first.type() != CV_8UC1 || pair.second.type() != CV_8UC1) {
    CV_Error(cv::Error::StsUnsupportedFormat,
             cv::format("the overlap measures need 8-bit pictures, not types %d and %d",
                        first.type(), second.type()));
  }
  return pair;
}

}  // namespace

jqstitching::OverlapFit jqstitching::TestParts(int offsetX, int offsetY,
                                               const OverlapLimits& limits, const cv::Mat& first,
                                               const cv::Mat& second, QualityScratch& scratch) {
  const HalvedPair pair = HalvePair(first, second, scratch);
  return TestOverlap(offsetX, offsetY, limits, pair.first, pair.second, scratch);
}

void JQStitchingAlgorithm::CalacOverLapImageBright(cv::Mat first, cv::Mat second, float& bright) {
  QualityScratch& scratch = m_workspace.get().quality;
  const HalvedPair pair = HalvePair(first, second, scratch);
  bright = jqstitching::BrightnessDifference(pair.first, pair.second, scratch);
}

void JQStitchingAlgorithm::CalacOverLapImageDefinition(cv::Mat first, cv::Mat second,
                                                       float& definition) {
  QualityScratch& scratch = m_workspace.get().quality;
  const HalvedPair pair = HalvePair(first, second, scratch);
  definition = jqstitching::DefinitionDifference(pair.first, pair.second, scratch);
}

void JQStitchingAlgorithm::CalacOverLapImageFlages(int offsetX, int offsetY, int rows, int cols,
                                                   cv::Mat first, cv::Mat second, int& flag) {
  const jqstitching::OverlapLimits limits{rows, cols, m_fBrightThreshold, m_fDefinitionThreshold};
  const jqstitching::OverlapFit result =
      jqstitching::TestParts(offsetX, offsetY, limits, first, second, m_workspace.get().quality);
  flag = result.fit ? 1 : 0;
}
