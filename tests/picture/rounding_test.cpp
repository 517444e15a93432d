#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include "picture/filter_rounding.h"
#include "picture/library_rounding.h"
#include "picture/remembered_probe.h"

namespace {

using jqstitching::RememberedProbe;

int g_probes = 0;
bool g_disturb = false;

// What it finds is the setting itself.
bool ProbeSetting() {
  ++g_probes;
  const bool found = cv::useOptimized();
  if (g_disturb) cv::setUseOptimized(!found);
  return found;
}

class Rounding : public ::testing::Test {
 protected:
  Rounding() {
    g_probes = 0;
    g_disturb = false;
    cv::setUseOptimized(true);
  }
  ~Rounding() override {
    cv::setUseOptimized(true);
    jqstitching::ForceLibraryCalls(false);
  }
};

TEST_F(Rounding, IsProbedOnceForEachSetting) {
  RememberedProbe<bool> probe(ProbeSetting);
  for (const bool optimized : {true, false, true, false}) {
    cv::setUseOptimized(optimized);
    EXPECT_EQ(probe.answer(), std::optional<bool>(optimized));
  }
  EXPECT_EQ(g_probes, 2);
}

TEST_F(Rounding, AProbeThatWasDisturbedIsForgotten) {
  RememberedProbe<bool> probe(ProbeSetting);
  g_disturb = true;
  EXPECT_EQ(probe.answer(), std::nullopt);
  g_disturb = false;
  for (const bool optimized : {true, false}) {
    cv::setUseOptimized(optimized);
    EXPECT_EQ(probe.answer(), std::optional<bool>(optimized));
  }
  EXPECT_EQ(g_probes, 3);
}

// The matrix library of the known builds rounds as our kernels do, on x86-64 at least;
// elsewhere the way out is as good, only slower. Its filter does so in the version of
// Debian 12; the probe does not recognise how that of Debian 13 (4.10) rounds.
TEST_F(Rounding, KnownBuildsAreFollowed) {
#if defined(__x86_64__)
  for (const bool optimized : {true, false}) {
    cv::setUseOptimized(optimized);
    EXPECT_TRUE(jqstitching::OwnGreyFollows());
    EXPECT_TRUE(jqstitching::OwnHalvingFollows());
#if CV_VERSION_MAJOR == 4 && CV_VERSION_MINOR <= 6
    EXPECT_NE(jqstitching::LibraryFilterRounding(), jqstitching::FilterRounding::kUnknown);
#endif
  }
#else
  GTEST_SKIP() << "other processors' builds may round otherwise";
#endif
}

TEST_F(Rounding, ForcedCallsFollowNothing) {
  jqstitching::PrepareRounding();
  jqstitching::ForceLibraryCalls(true);
  EXPECT_FALSE(jqstitching::OwnGreyFollows());
  EXPECT_FALSE(jqstitching::OwnHalvingFollows());
  EXPECT_EQ(jqstitching::FollowableRounding(), std::nullopt);
}

// Grey in 14 bits, as some builds have it.
void CoarseGrey(const cv::Mat& from, cv::Mat& to) {
  to.create(from.size(), CV_8U);
  for (int r = 0; r < from.rows; ++r) {
    for (int c = 0; c < from.cols; ++c) {
      const cv::Vec3b p = from.at<cv::Vec3b>(r, c);
      to.at<unsigned char>(r, c) =
          static_cast<unsigned char>((4899 * p[0] + 9617 * p[1] + 1868 * p[2] + 8192) >> 14);
    }
  }
}

void TruncatedHalves(const cv::Mat& from, cv::Mat& to) {
  to.create(from.rows / 2, from.cols / 2, CV_8U);
  for (int r = 0; r < to.rows; ++r) {
    for (int c = 0; c < to.cols; ++c) {
      const auto at = [&](int y, int x) { return from.at<unsigned char>(2 * r + y, 2 * c + x); };
      to.at<unsigned char>(r, c) =
          static_cast<unsigned char>((at(0, 0) + at(0, 1) + at(1, 0) + at(1, 1)) / 4);
    }
  }
}

TEST_F(Rounding, TheComparisonsNoticeAnotherRule) {
  EXPECT_FALSE(jqstitching::GivesOwnGrey(CoarseGrey));
  EXPECT_FALSE(jqstitching::GivesOwnHalves(TruncatedHalves));
  // One wrong sample at the end of a row is enough.
  EXPECT_FALSE(jqstitching::GivesOwnGrey([](const cv::Mat& from, cv::Mat& to) {
    cv::cvtColor(from, to, cv::COLOR_RGB2GRAY);
    unsigned char& last = to.at<unsigned char>(to.rows - 1, to.cols - 1);
    last = static_cast<unsigned char>(last ^ 1);
  }));
}

}  // namespace
