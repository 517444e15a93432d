#include <gtest/gtest.h>

#include "support/engine_pair.h"
#include "support/guarded_matrix.h"
#include "support/property_test.h"

namespace {

class PlacementProperty : public PropertyTest {
 protected:
  static cv::Point AnyPoint(RandomSource& random, int reach) {
    return cv::Point{random.Int(-reach, reach), random.Int(-reach, reach)};
  }
};
JQ_AT_EVERY_CPU_LEVEL(PlacementProperty);

TEST_P(PlacementProperty, BorderExpandEqualsTheTwin) {
  Repeat(1500, [](RandomSource& random) {
    const int types[] = {CV_8UC1, CV_8UC3, CV_8UC3, CV_8UC4};
    const int type = types[random.Int(0, 3)];
    const cv::Mat picture =
        pictures::Noise(random, cv::Size{random.Size(60), random.Size(60)}, type);
    // A view's growth may show what lies round it: that is the image library's.
    const GuardedMatrix mosaic(random, picture);
    const int growRows = random.Int(0, 30);
    const int growCols = random.Int(0, 30);
    const int frameRows = random.OneIn(2) ? growRows : random.Int(0, 40);
    const int frameCols = random.OneIn(2) ? growCols : random.Int(0, 40);
    const cv::Point position{random.Int(-5, picture.cols), random.Int(-5, picture.rows)};
    const cv::Point offset = AnyPoint(random, 30);
    const cv::Point boxMin = AnyPoint(random, 100);
    const cv::Point boxMax = AnyPoint(random, 100);
    EnginePair engines;
    cv::Mat grown[2];
    cv::Point points[2][3];
    int k = 0;
    engines.Both([&](auto& engine) {
      engine.BorderExpand(mosaic.View(), growRows, growCols, offset.x, offset.y, frameRows,
                          frameCols, picture.cols, picture.rows, position, grown[k], points[k][0],
                          boxMin, boxMax, points[k][1], points[k][2]);
      ++k;
    });
    EXPECT_TRUE(SameMatrix(grown[0], grown[1]));
    EXPECT_EQ(grown[0].data == mosaic.View().data, grown[1].data == mosaic.View().data);
    for (int n = 0; n < 3; ++n) EXPECT_EQ(points[0][n], points[1][n]) << n;
    EXPECT_TRUE(mosaic.Untouched());
  });
}

TEST_P(PlacementProperty, ContentBoxEqualsTheTwin) {
  Repeat(3000, [](RandomSource& random) {
    // Small numbers: every equality comes up.
    const int reach = random.OneIn(2) ? 4 : 500;
    const cv::Point boxMin = AnyPoint(random, reach);
    const cv::Point boxMax = AnyPoint(random, reach);
    const cv::Point position = AnyPoint(random, reach);
    const int rows = random.Int(0, reach);
    const int cols = random.Int(0, reach);
    const int ignored = random.Int(-9, 9);
    EnginePair engines;
    cv::Point points[2][2];
    int k = 0;
    engines.Both([&](auto& engine) {
      engine.outputImageCoordate(boxMin, boxMax, ignored, -ignored, rows, cols, position,
                                 points[k][0], points[k][1]);
      ++k;
    });
    EXPECT_EQ(points[0][0], points[1][0]) << boxMin << boxMax << position << cols << ' ' << rows;
    EXPECT_EQ(points[0][1], points[1][1]) << boxMin << boxMax << position << cols << ' ' << rows;
  });
}

// One call with everything random, failures included.
TEST_P(PlacementProperty, BlendEqualsTheTwin) {
  Repeat(300, [](RandomSource& random) {
    EnginePair engines;
    const int level = random.OneIn(20) ? random.Int(-1, 0) : random.OneIn(2) ? 1 : random.Int(2, 4);
    engines.Both([&](auto& engine) { engine.SetParameter(level, 8, 0, 1); });
    const int divisor = level < 1 ? 1 : level;
    const int type = random.OneIn(3) ? CV_8UC1 : CV_8UC3;
    const int rows = random.Size(70);
    const int cols = random.Size(70);
    cv::Mat picture = pictures::Any(random,
                                    cv::Size{cols * divisor + random.Int(0, divisor - 1),
                                             rows * divisor + random.Int(0, divisor - 1)},
                                    type);
    if (random.OneIn(25)) picture = pictures::Any(random, rows, cols, CV_8UC4);
    const GuardedMatrix frame(random, picture);
    const GuardedMatrix frameTwin = frame.Twin();
    const cv::Mat canvas =
        random.OneIn(4) ? pictures::Any(random, cv::Size{random.Size(150), random.Size(150)}, type)
                        : pictures::Any(random, 2 * rows + random.Int(0, rows), 2 * cols, type);
    const GuardedMatrix mosaic(random, canvas);
    const GuardedMatrix mosaicTwin = mosaic.Twin();
    stitchflags flags;
    flags.positionX = random.Int(0, canvas.cols);
    flags.positionY = random.Int(0, canvas.rows);
    flags.offsetX = random.Int(-cols, cols);
    flags.offsetY = random.Int(-rows, rows);
    const cv::Point boxMin = AnyPoint(random, 100);
    const cv::Point boxMax = AnyPoint(random, 100);
    SCOPED_TRACE(::testing::Message()
                 << "level " << level << ", frame " << cols << " x " << rows << ", mosaic "
                 << canvas.size() << ", placed at " << flags.positionX + flags.offsetX << ", "
                 << flags.positionY + flags.offsetY);
    struct Result {
      cv::Point points[3];
      cv::Mat mosaic = cv::Mat(1, 1, CV_8UC1, cv::Scalar(3));
      cv::Mat region = cv::Mat(1, 1, CV_8UC1, cv::Scalar(4));
    } results[2];
    Outcome outcomes[2];
    int k = 0;
    engines.Both([&](auto& engine) {
      Result& r = results[k];
      outcomes[k] = Ending([&] {
        engine.StitchingImage_imageblend(k == 0 ? mosaic.View() : mosaicTwin.View(),
                                         k == 0 ? frame.View() : frameTwin.View(), flags, boxMin,
                                         boxMax, cv::Point(7, 7), r.points[0], r.points[1],
                                         r.points[2], r.mosaic, r.region);
      });
      ++k;
    });
    EXPECT_EQ(outcomes[0], outcomes[1]);
    EXPECT_TRUE(SameMatrix(results[0].mosaic, results[1].mosaic));
    EXPECT_TRUE(SameMatrix(results[0].region, results[1].region));
    for (int n = 0; n < 3; ++n) EXPECT_EQ(results[0].points[n], results[1].points[n]) << n;
    EXPECT_TRUE(SameMatrix(mosaic.View(), mosaicTwin.View()));
    EXPECT_TRUE(SameMatrix(frame.View(), frameTwin.View()));
    EXPECT_TRUE(mosaic.GuardsIntact());
    EXPECT_TRUE(frame.GuardsIntact());
    EXPECT_EQ(results[0].mosaic.data == mosaic.View().data,
              results[1].mosaic.data == mosaicTwin.View().data);
    EXPECT_EQ(results[0].region.data == frame.View().data,
              results[1].region.data == frameTwin.View().data);
    EXPECT_TRUE(engines.SameMembers());
    if (outcomes[0] != Outcome::kReturned) {
      EXPECT_TRUE(mosaic.Untouched());
      EXPECT_TRUE(frame.Untouched());
    }
  });
}

}  // namespace
