#ifndef JQ_TESTS_OVERLAP_OFFSET_CALL_H
#define JQ_TESTS_OVERLAP_OFFSET_CALL_H

#include "support/compare.h"
#include "support/engines.h"

/// Fixture that holds what the offset driver writes, with values of its own
/// before the first call.
template <class Engine>
class OffsetTest : public EngineTest<Engine> {
 protected:
  void Call(int frameIndex, const cv::Mat& ref, const cv::Mat& prev, const cv::Mat& cur) {
    this->engine.StitchingImage_offset(frameIndex, ref, prev, cur, minPoint, maxPoint, mosaic,
                                       flags);
  }
  void ExpectUntouched() const {
    EXPECT_EQ(minPoint, cv::Point(-1, -2));
    EXPECT_EQ(maxPoint, cv::Point(-3, -4));
    EXPECT_EQ(mosaic.size(), cv::Size(1, 1));
    EXPECT_EQ(flags, stitchflags());
  }
  cv::Point minPoint = cv::Point(-1, -2);
  cv::Point maxPoint = cv::Point(-3, -4);
  cv::Mat mosaic = cv::Mat(1, 1, CV_8UC1, cv::Scalar(9));
  stitchflags flags;
};

#endif  // JQ_TESTS_OVERLAP_OFFSET_CALL_H
