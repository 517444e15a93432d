#include <gtest/gtest.h>

#include <cstring>
#include <new>
#include <vector>

#include "support/compare.h"
#include "support/engines.h"

namespace {

template <class Engine>
class EngineObject : public EngineTest<Engine> {};
TYPED_TEST_SUITE(EngineObject, Engines, EngineNames);

TYPED_TEST(EngineObject, FreshObjectHasTheDefaults) {
  const TypeParam& e = this->engine;
  EXPECT_EQ(e.m_nDetectLevel, 1);
  EXPECT_EQ(e.m_nDownScale, 1);
  EXPECT_EQ(e.m_nCornerBudget, 8);
  EXPECT_EQ(e.m_nImageCols, 5000);
  EXPECT_EQ(e.m_nImageRows, 5000);
  EXPECT_EQ(e.m_nBoundCols, 20000);
  EXPECT_EQ(e.m_nBoundRows, 20000);
  EXPECT_EQ(e.m_nFlagPreset, 5);
  EXPECT_EQ(e.m_fBrightPreset, 40.0f);
  EXPECT_EQ(e.m_fDefinitionPreset, 15.0f);
  EXPECT_EQ(e.m_nOverlapMode, 0);
  EXPECT_EQ(e.m_nUsePresets, 1);
}

TYPED_TEST(EngineObject, FreshRecordIsAllZero) {
  EXPECT_EQ(this->engine.m_stitchFlags, stitchflags());
  EXPECT_EQ(this->engine.m_stitchFlags.matchCount, 0);
  EXPECT_EQ(this->engine.m_stitchFlags.overlapFlag, 0);
}

// The active thresholds are armed by the offset driver, never by the constructor.
TYPED_TEST(EngineObject, ConstructorLeavesTheActiveThresholdsAlone) {
  alignas(TypeParam) unsigned char memory[sizeof(TypeParam)];
  std::memset(memory, 0x5a, sizeof memory);
  auto* built = new (memory) TypeParam;
  unsigned char expected[4];
  std::memset(expected, 0x5a, sizeof expected);
  EXPECT_EQ(std::memcmp(&built->m_nFlagThreshold, expected, 4), 0);
  EXPECT_EQ(std::memcmp(&built->m_fBrightThreshold, expected, 4), 0);
  EXPECT_EQ(std::memcmp(&built->m_fDefinitionThreshold, expected, 4), 0);
  EXPECT_EQ(built->m_nFlagPreset, 5);
  built->~TypeParam();
}

TYPED_TEST(EngineObject, MembersStandInTheDeclaredOrder) {
  const TypeParam& e = this->engine;
  const std::vector<const void*> members = {
      &e.m_nDetectLevel,      &e.m_nDownScale,       &e.m_nCornerBudget,        &e.m_nImageCols,
      &e.m_nImageRows,        &e.m_nBoundCols,       &e.m_nBoundRows,           &e.m_nFlagThreshold,
      &e.m_nFlagPreset,       &e.m_fBrightThreshold, &e.m_fDefinitionThreshold, &e.m_fBrightPreset,
      &e.m_fDefinitionPreset, &e.m_nOverlapMode,     &e.m_nUsePresets,          &e.m_stitchFlags};
  for (std::size_t k = 1; k < members.size(); ++k) {
    EXPECT_LT(members[k - 1], members[k]) << "member " << k + 1;
  }
  EXPECT_EQ(sizeof(stitchflags), 24u);
}

TYPED_TEST(EngineObject, SetParameterStoresTheFourValues) {
  this->engine.SetParameter(4, -3, 7, 0);
  EXPECT_EQ(this->engine.m_nDetectLevel, 4);
  EXPECT_EQ(this->engine.m_nCornerBudget, -3);
  EXPECT_EQ(this->engine.m_nOverlapMode, 7);
  EXPECT_EQ(this->engine.m_nUsePresets, 0);
}

TYPED_TEST(EngineObject, SetParameterDerivesTheDownScale) {
  const struct {
    int level;
    int downScale;
  } rows[] = {{1, 2}, {2, 2}, {3, 1}, {4, 1}, {0, 1}, {-1, 1}, {-2147483647 - 1, 1}};
  for (const auto& row : rows) {
    this->engine.SetParameter(row.level, 8, 0, 0);
    EXPECT_EQ(this->engine.m_nDownScale, row.downScale) << "level " << row.level;
  }
}

template <class Engine>
class ZeroSamples : public EngineTest<Engine> {};
TYPED_TEST_SUITE(ZeroSamples, Engines, EngineNames);

TYPED_TEST(ZeroSamples, FrameWithoutZerosIsUnchanged) {
  for (int type : {CV_8UC1, CV_8UC3}) {
    cv::Mat frame(5, 7, type, cv::Scalar(1, 2, 255));
    const cv::Mat before = frame.clone();
    cv::Mat out;
    this->engine.JudgeImageChannel(frame, out);
    EXPECT_TRUE(SameMatrix(frame, before));
    EXPECT_TRUE(SameMatrix(out, before));
  }
}

TYPED_TEST(ZeroSamples, OneChannelZerosBecomeOnes) {
  cv::Mat frame = cv::Mat::zeros(4, 9, CV_8UC1);
  cv::Mat out;
  this->engine.JudgeImageChannel(frame, out);
  EXPECT_TRUE(SameMatrix(out, cv::Mat(4, 9, CV_8UC1, cv::Scalar(1))));
}

TYPED_TEST(ZeroSamples, ThreeChannelZerosBecomeTwos) {
  cv::Mat frame(1, 2, CV_8UC3);
  frame.at<cv::Vec3b>(0, 0) = cv::Vec3b(0, 0, 0);
  frame.at<cv::Vec3b>(0, 1) = cv::Vec3b(0, 7, 0);
  cv::Mat out;
  this->engine.JudgeImageChannel(frame, out);
  EXPECT_EQ(out.at<cv::Vec3b>(0, 0), cv::Vec3b(2, 2, 2));
  EXPECT_EQ(out.at<cv::Vec3b>(0, 1), cv::Vec3b(2, 7, 2));
}

TYPED_TEST(ZeroSamples, DestinationSharesTheCallersPixels) {
  cv::Mat frame = cv::Mat::zeros(3, 3, CV_8UC3);
  cv::Mat out;
  this->engine.JudgeImageChannel(frame, out);
  EXPECT_EQ(out.data, frame.data);
  EXPECT_EQ(frame.at<cv::Vec3b>(1, 1), cv::Vec3b(2, 2, 2));
  this->engine.JudgeImageChannel(frame, frame);
  EXPECT_EQ(out.data, frame.data);
}

TYPED_TEST(ZeroSamples, EmptyMatrixStaysEmpty) {
  cv::Mat frame;
  cv::Mat out(2, 2, CV_8UC1);
  this->engine.JudgeImageChannel(frame, out);
  EXPECT_TRUE(out.empty());
  EXPECT_EQ(out.data, frame.data);
}

// The stride is 3 bytes a pixel whatever the channel count.
TYPED_TEST(ZeroSamples, FourChannelRowsAreVisitedForThreeQuarters) {
  cv::Mat frame = cv::Mat::zeros(2, 4, CV_8UC4);
  cv::Mat out;
  this->engine.JudgeImageChannel(frame, out);
  for (int r = 0; r < 2; ++r) {
    for (int k = 0; k < 16; ++k) EXPECT_EQ(int{out.ptr(r)[k]}, k < 12 ? 2 : 0) << r << ' ' << k;
  }
}

TYPED_TEST(ZeroSamples, TwoChannelRowsEndBeforeTheThirdByte) {
  cv::Mat whole = cv::Mat::zeros(3, 8, CV_8UC2);
  cv::Mat view = whole(cv::Rect(2, 1, 4, 1));
  cv::Mat out;
  this->engine.JudgeImageChannel(view, out);
  for (int r = 0; r < 3; ++r) {
    for (int k = 0; k < 16; ++k) {
      EXPECT_EQ(int{whole.ptr(r)[k]}, r == 1 && k >= 4 && k < 12 ? 2 : 0) << r << ' ' << k;
    }
  }
}

TYPED_TEST(ZeroSamples, PaddedRowsAreAddressedByTheirStep) {
  cv::Mat whole = cv::Mat::zeros(4, 6, CV_8UC1);
  cv::Mat out;
  this->engine.JudgeImageChannel(whole(cv::Rect(1, 1, 3, 2)), out);
  for (int r = 0; r < 4; ++r) {
    for (int c = 0; c < 6; ++c) {
      const bool inside = r >= 1 && r < 3 && c >= 1 && c < 4;
      EXPECT_EQ(int{whole.at<unsigned char>(r, c)}, inside ? 1 : 0) << r << ' ' << c;
    }
  }
}

}  // namespace
