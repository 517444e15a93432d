// Shrinking a picture with a background: no dark edges, and no copy of the whole.
#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include "host/output/picture.h"

namespace jqhost_test {
namespace {

using Colour = std::array<int, 3>;

TEST(Shrink, EqualsRecolouringFirstWithinOneGreyLevel) {
  constexpr int kSeed = 7;
  cv::RNG random(kSeed);
  for (int trial = 0; trial < 40; ++trial) {
    cv::Mat picture(random.uniform(40, 300), random.uniform(40, 300), CV_8UC3);
    random.fill(picture, cv::RNG::UNIFORM, 2, 256);
    const cv::Rect hole(random.uniform(0, 20), random.uniform(0, 20), random.uniform(1, 20),
                        random.uniform(1, 20));
    picture(hole).setTo(cv::Scalar::all(0));
    const Colour colour = {random.uniform(0, 256), random.uniform(0, 256), random.uniform(0, 256)};
    const int longest = random.uniform(5, 39);
    const cv::Mat expected = jqhost::Shrink(jqhost::WithBackground(picture, colour), longest);
    const cv::Mat shrunk = jqhost::Shrink(picture, longest, colour);
    ASSERT_EQ(shrunk.size(), expected.size());
    EXPECT_LE(cv::norm(shrunk, expected, cv::NORM_INF), 1) << "seed " << kSeed << ", " << trial;
  }
}

TEST(Shrink, LeavesNoDarkOutlineRoundTheFrames) {
  // A light frame on white: nothing in the small picture may be darker than the frame.
  cv::Mat picture(301, 301, CV_8UC3, cv::Scalar::all(0));
  picture(cv::Rect(50, 50, 175, 131)).setTo(cv::Scalar::all(200));
  const cv::Mat small = jqhost::Shrink(picture, 40, Colour{255, 255, 255});
  double darkest = 0;
  cv::minMaxLoc(small.reshape(1), &darkest);
  EXPECT_GE(darkest, 199);
}

TEST(Shrink, KeepsAPictureThatIsSmallEnough) {
  cv::Mat picture(10, 20, CV_8UC3, cv::Scalar::all(0));
  const cv::Mat shown = jqhost::Shrink(picture, 20, Colour{1, 2, 3});
  ASSERT_EQ(shown.size(), picture.size());
  EXPECT_EQ(shown.at<cv::Vec3b>(4, 5), cv::Vec3b(3, 2, 1));
}

}  // namespace
}  // namespace jqhost_test
