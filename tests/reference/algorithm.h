#ifndef JQ_TESTS_REFERENCE_ALGORITHM_H
#define JQ_TESTS_REFERENCE_ALGORITHM_H

#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

#include "jqstitchingalgorithm.h"

namespace reference {

/// The plain twin of `JQStitchingAlgorithm`: the same members and methods, one
/// loop per rule and the image library's own calls where the result is defined
/// by them. It is never tuned and shares nothing with the library but the
/// record. What a method does is said at its namesake in the public header.
class Algorithm {
 public:
  std::int32_t m_nDetectLevel;
  std::int32_t m_nDownScale;
  std::int32_t m_nCornerBudget;
  std::int32_t m_nImageCols;
  std::int32_t m_nImageRows;
  std::int32_t m_nBoundCols;
  std::int32_t m_nBoundRows;
  std::int32_t m_nFlagThreshold;
  std::int32_t m_nFlagPreset;
  float m_fBrightThreshold;
  float m_fDefinitionThreshold;
  float m_fBrightPreset;
  float m_fDefinitionPreset;
  std::int32_t m_nOverlapMode;
  std::int32_t m_nUsePresets;
  stitchflags m_stitchFlags;
  int m_pairCount = 0;  // matches of the last registration, before the consensus

  Algorithm();
  void SetParameter(int nDetectLevel, int nCornerBudget, int nOverlapMode, int nUsePresets);
  void JudgeImageChannel(cv::Mat source, cv::Mat& destination);

  void FindHarrisCornerCoordianteFun(cv::Mat image, std::vector<cv::Point>& corners);
  void NoRotaFeatureDescriber(cv::Mat image, std::vector<cv::Point> corners, cv::Mat& descriptors);
  void CalacDistanceIndexFun(cv::Mat first, cv::Mat second, std::vector<cv::Point>& pairs);
  void RoughMatchPoint(std::vector<cv::Point> cornersFirst, std::vector<cv::Point> cornersSecond,
                       std::vector<cv::Point> pairs, std::vector<cv::Point>& matchedFirst,
                       std::vector<cv::Point>& matchedSecond);
  void RansacMatchPointArrayFun(std::vector<cv::Point> first, std::vector<cv::Point> second,
                                std::vector<cv::Point>& inliersFirst,
                                std::vector<cv::Point>& inliersSecond, float& tx, float& ty);
  int ImageMosaicFun(cv::Mat first, cv::Mat second, int& offsetX, int& offsetY, int& supportCount);

  void StitchingImage_offset(int frameIndex, cv::Mat refImage, cv::Mat prevImage, cv::Mat curImage,
                             cv::Point& minPoint, cv::Point& maxPoint, cv::Mat& mosaicImage,
                             stitchflags& flags);
  void CalacOverLapImageFlages(int offsetX, int offsetY, int rows, int cols, cv::Mat first,
                               cv::Mat second, int& flag);
  void CalacOverLapImageBright(cv::Mat first, cv::Mat second, float& bright);
  void CalacOverLapImageDefinition(cv::Mat first, cv::Mat second, float& definition);
  void TakeOutOverLapImageFromMoasicImage(cv::Point origin, int dx, int dy, cv::Mat first,
                                          cv::Mat second, cv::Mat& firstPart, cv::Mat& secondPart);
  void TakeOutOverLapImage(cv::Point origin, int dx, int dy, cv::Mat first, cv::Mat second,
                           cv::Mat& firstPart, cv::Mat& secondPart);
  int ImageMotionModel(cv::Mat first, cv::Mat second);

  void StitchingImage_imageblend(cv::Mat mosaic, cv::Mat frame, stitchflags flags,
                                 cv::Point mosaicMin, cv::Point mosaicMax, cv::Point reserved,
                                 cv::Point& newMosaicMin, cv::Point& newMosaicMax,
                                 cv::Point& newPosition, cv::Mat& newMosaic, cv::Mat& blendRegion);
  void BorderExpand(cv::Mat mosaic, int growRows, int growCols, int offsetX, int offsetY,
                    int frameRows, int frameCols, int mosaicCols, int mosaicRows,
                    cv::Point position, cv::Mat& grown, cv::Point& newPosition, cv::Point boxMin,
                    cv::Point boxMax, cv::Point& newBoxMin, cv::Point& newBoxMax);
  void outputImageCoordate(cv::Point boxMin, cv::Point boxMax, int ignored1, int ignored2,
                           int frameRows, int frameCols, cv::Point position, cv::Point& newBoxMin,
                           cv::Point& newBoxMax);
  void TwoImageFusion(cv::Mat oldBlock, cv::Mat newFrame, cv::Mat& fused);
  void WeightofTwoAreaFun(cv::Mat oldBlock, cv::Mat newFrame, cv::Mat& weight);
};

}  // namespace reference

#endif  // JQ_TESTS_REFERENCE_ALGORITHM_H
