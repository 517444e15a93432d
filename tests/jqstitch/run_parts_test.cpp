// Parts of the command line that are easier to try by themselves.
#include <gtest/gtest.h>

#include "console/progress_bar.h"
#include "input/path_list.h"
#include "jqimagestitching.h"
#include "jqstitch/scene_frames.h"
#include "run/position_tracker.h"

namespace jqstitch_test {
namespace {

using Strings = std::vector<std::string>;

TEST(NaturalOrder, CountsLikePeople) {
  Strings paths = {"d/f10.png",
                   "d/f9.png",
                   "d/f1.png",
                   "d/F2.png",
                   "d/f02.png",
                   "d/f2b.png",
                   "d/f2a.png",
                   "d/\xc3\xa4"
                   "1.png"};
  jqstitch::SortNaturally(paths);
  EXPECT_EQ(paths.front(),
            "d/\xc3\xa4"
            "1.png")
      << "a letter with a mark is still that letter";
  const auto place = [&](const std::string& path) {
    return std::find(paths.begin(), paths.end(), path) - paths.begin();
  };
  EXPECT_LT(place("d/f1.png"), place("d/f02.png"));
  EXPECT_LT(place("d/f02.png"), place("d/f2a.png"));
  EXPECT_LT(place("d/f2a.png"), place("d/f2b.png"));
  EXPECT_LT(place("d/f2b.png"), place("d/f9.png"));
  EXPECT_LT(place("d/f9.png"), place("d/f10.png"));
}

TEST(NaturalOrder, DoesNotDependOnTheOrderGiven) {
  // "f02" and "f2" count the same; their bytes decide.
  Strings one = {"f2", "f02", "f002"}, other = {"f002", "f2", "f02"};
  jqstitch::SortNaturally(one);
  jqstitch::SortNaturally(other);
  EXPECT_EQ(one, (Strings{"f002", "f02", "f2"}));
  EXPECT_EQ(one, other);
}

TEST(NaturalOrder, TellsAWildcardsOrder) {
  EXPECT_TRUE(jqstitch::LooksSortedByBytes({"f1", "f10", "f2"}));
  EXPECT_FALSE(jqstitch::LooksSortedByBytes({"f1", "f2", "f10"}));
  EXPECT_FALSE(jqstitch::LooksSortedByBytes({"f01", "f02", "f10"}));
  EXPECT_FALSE(jqstitch::LooksSortedByBytes({"a/f1", "b/f10", "b/f2"})) << "of two folders";
}

TEST(Progress, TellsCountRateAndTimeLeft) {
  using jqstitch::ProgressText;
  EXPECT_EQ(ProgressText(0, 60, "frames", 0), "0/60 frames");
  EXPECT_EQ(ProgressText(12, 60, "frames", 4), "12/60 frames, 3.0 frames/s, 0:16 left");
  EXPECT_EQ(ProgressText(10, 1210, "frames", 1), "10/1210 frames, 10.0 frames/s, 2:00 left");
  EXPECT_EQ(ProgressText(60, 60, "frames", 20), "60/60 frames, 3.0 frames/s");
  EXPECT_EQ(ProgressText(12, 0, "frames", 4), "12 frames, 3.0 frames/s");
}

// One step of a walk: the frame goes from the last place by an offset, and the
// mosaic grows as the library's public growth operation says.
TEST(PositionTracker, FollowsTheOriginThroughEveryGrowth) {
  const cv::Size frame(40, 30);
  cv::RNG random(99);
  for (int walk = 0; walk < 200; ++walk) {
    jqstitch::PositionTracker tracker(frame);
    JQStitchingAlgorithm engine;
    cv::Mat mosaic(2 * frame.height, 2 * frame.width, CV_8UC1);
    const cv::Point start(frame.width - frame.width / 2, frame.height - frame.height / 2);
    cv::Point position = start, expected(0, 0);
    cv::Rect bounds(start, frame);
    for (int step = 0; step < 12; ++step) {
      // Half a frame is the shift that just touches an edge.
      const int choices[] = {0, 1, 20, 35};
      const cv::Point offset(choices[random.uniform(0, 4)] * (random.uniform(0, 2) * 2 - 1),
                             choices[random.uniform(0, 3)] * (random.uniform(0, 2) * 2 - 1));
      cv::Mat grown;
      cv::Point moved, boxMin, boxMax;
      engine.BorderExpand(mosaic, frame.height, frame.width, offset.x, offset.y, frame.height,
                          frame.width, mosaic.cols, mosaic.rows, position, grown, moved, {}, {},
                          boxMin, boxMax);
      const cv::Point growth = moved - position;
      mosaic = grown;
      position = moved + offset;
      expected += offset;
      bounds = (bounds + growth) | cv::Rect(position, frame);
      tracker.Update(mosaic.size(), bounds);
      ASSERT_EQ(position - tracker.Origin(), expected) << "walk " << walk << ", step " << step;
    }
  }
}

}  // namespace
}  // namespace jqstitch_test
