// The canvas that the host drives, beside the plain twin, through random sequences.

#include <gtest/gtest.h>

#include "support/host_record.h"
#include "support/pictures.h"
#include "support/property_test.h"
#include "twin_compare.h"

namespace {

class CanvasProperty : public PropertyTest {};

void ExpectSameRect(const JQStitchingRect& actual, const reference::Rect4& expected) {
  EXPECT_EQ(actual.x1, expected.x1);
  EXPECT_EQ(actual.y1, expected.y1);
  EXPECT_EQ(actual.x2, expected.x2);
  EXPECT_EQ(actual.y2, expected.y2);
}

void ExpectSameCanvas(const JQImageStitching& library, const reference::Stitcher& twin) {
  EXPECT_TRUE(SameMatrix(library.m_resultMat, twin.m_resultMat));
  EXPECT_EQ(library.m_canvasRows, twin.m_canvasRows);
  EXPECT_EQ(library.m_canvasCols, twin.m_canvasCols);
  EXPECT_EQ(library.m_frameSize, twin.m_frameSize);
  EXPECT_EQ(library.m_frameRows, twin.m_frameRows);
  EXPECT_EQ(library.m_frameCols, twin.m_frameCols);
  EXPECT_EQ(library.m_framePos, twin.m_framePos);
  EXPECT_EQ(library.m_frameOffset, twin.m_frameOffset);
  ExpectSameRect(library.m_contentRect, twin.m_contentRect);
  ExpectSameRect(library.m_cutRect, twin.m_cutRect);
}

}  // namespace

TEST_P(CanvasProperty, AnySequenceIsThatOfTheTwin) {
  Repeat(400, [](RandomSource& random) {
    JQImageStitching library;
    reference::Stitcher twin;
    const int type = random.OneIn(2) ? CV_8UC1 : CV_8UC3;
    cv::Mat frame = pictures::Noise(random, cv::Size{random.Int(1, 14), random.Int(1, 14)}, type);
    library.initResultMat(&frame);
    twin.initResultMat(&frame);
    ExpectSameCanvas(library, twin);
    for (int step = random.Int(1, 7); step > 0; --step) {
      // Often of another size than the first frame, and often exactly on an edge.
      cv::Mat next =
          random.OneIn(2)
              ? frame
              : pictures::Noise(random, cv::Size{random.Int(1, 20), random.Int(1, 20)}, type);
      if (random.OneIn(2)) {
        const cv::Point place{random.Int(-20, twin.m_canvasCols + 5),
                              random.Int(-20, twin.m_canvasRows + 5)};
        library.m_framePos = twin.m_framePos = place;
      }
      cv::Point offset{random.Int(-20, 20), random.Int(-20, 20)};
      if (random.OneIn(3)) offset.x = -twin.m_framePos.x;
      if (random.OneIn(3)) offset.y = -twin.m_framePos.y;
      if (random.OneIn(3)) offset.x = twin.m_canvasCols - next.cols - twin.m_framePos.x;
      if (random.OneIn(3)) offset.y = twin.m_canvasRows - next.rows - twin.m_framePos.y;
      library.m_frameOffset = twin.m_frameOffset = offset;
      library.extendResultMat(&next);
      twin.extendResultMat(&next);
      ExpectSameCanvas(library, twin);

      library.m_framePos += offset;
      twin.m_framePos += offset;
      library.findCutPoint(&next);
      twin.findCutPoint(&next);
      ExpectSameCanvas(library, twin);
    }
  });
}

TEST_P(CanvasProperty, BackgroundIsThatOfTheTwin) {
  Repeat(300, [](RandomSource& random) {
    JQImageStitching library;
    reference::Stitcher twin;
    const int type = random.OneIn(4) ? CV_8UC4 : CV_8UC3;
    const cv::Size size{random.Size(40), random.Size(40)};
    const int highest = random.Int(0, 2);
    const cv::Mat whole = pictures::Noise(random, size, type, 0, highest);
    const cv::Rect view{0, 0, random.Int(1, whole.cols), random.Int(1, whole.rows)};
    const cv::Mat forLibrary = whole.clone();
    const cv::Mat forTwin = whole.clone();
    inside::CurFrame(library) = forLibrary(view);
    twin.m_curFrame = forTwin(view);
    const int c0 = random.OneIn(3) ? 0 : random.Int(-600, 600);
    const int c1 = random.OneIn(3) ? 0 : random.Int(-600, 600);
    const int c2 = random.OneIn(3) ? 0 : random.Int(-600, 600);
    EXPECT_EQ(library.ChangeStitchingBackground(c0, c1, c2),
              twin.ChangeStitchingBackground(c0, c1, c2));
    EXPECT_TRUE(SameMatrix(forLibrary, forTwin));
  });
}

INSTANTIATE_TEST_SUITE_P(Once, CanvasProperty, ::testing::Values(CpuLevels().back()));
