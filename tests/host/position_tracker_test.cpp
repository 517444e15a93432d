#include <gtest/gtest.h>

#include <opencv2/core.hpp>

#include "host/verdict/position_tracker.h"
#include "jqstitchingalgorithm.h"

namespace jqhost_test {
namespace {

// One step of a walk: the frame goes from the last place by an offset, and the
// mosaic grows as the library's public growth operation says.
TEST(PositionTracker, FollowsTheOriginThroughEveryGrowth) {
  const cv::Size frame(40, 30);
  cv::RNG random(99);
  for (int walk = 0; walk < 200; ++walk) {
    jqhost::PositionTracker tracker(frame);
    JQStitchingAlgorithm engine;
    cv::Mat mosaic(2 * frame.height, 2 * frame.width, CV_8UC1);
    const cv::Point start(frame.width - frame.width / 2, frame.height - frame.height / 2);
    cv::Point position = start, expected(0, 0);
    cv::Rect bounds(start, frame);
    for (int step = 0; step < 12; ++step) {
      // Half a frame is the shift that just touches an edge.
      const int choices[] = {0, 1, 20, 35};
      const int size[] = {choices[random.uniform(0, 4)], choices[random.uniform(0, 3)]};
      const int sign[] = {random.uniform(0, 2) * 2 - 1, random.uniform(0, 2) * 2 - 1};
      const cv::Point offset(size[0] * sign[0], size[1] * sign[1]);
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
}  // namespace jqhost_test
