// What a stitcher hands to a host's own converter, and what it makes of what comes back.
// The definition here comes before the platform library's.

#include <gtest/gtest.h>

#include "jqimageconvert.h"
#include "run_state.h"
#include "support/host_record.h"
#include "support/outcome.h"
#include "support/scenes.h"

namespace {

enum class Way { kFill, kLeaveAlone, kAssign, kKeepAHeader };
Way g_way = Way::kFill;
cv::Mat g_kept;
bool g_wasEmpty = true;

cv::Mat PictureOf(const _tagJQIMG* img) {
  return cv::Mat(img->height, img->width, CV_8UC3, img->pixels,
                 static_cast<size_t>(img->bytesPerLine));
}

}  // namespace

void ConvertJQImgToCv8UC3(_tagJQIMG* img, cv::Mat& out) {
  g_wasEmpty = g_wasEmpty && out.empty() && out.data == nullptr;
  switch (g_way) {
    case Way::kFill:
      PictureOf(img).copyTo(out);
      return;
    case Way::kLeaveAlone:
      return;
    case Way::kAssign:
      out = PictureOf(img).clone();
      return;
    case Way::kKeepAHeader:
      PictureOf(img).copyTo(out);
      g_kept = out;
  }
}

namespace {

class Converter : public ::testing::Test {
 protected:
  Converter() {
    RandomSource random(3);
    m_scene = scenes::Dense(random, 500, 900);
  }
  ~Converter() override { g_way = Way::kFill; }

  Outcome Feed(JQImageStitching& stitcher, int x, Way way = Way::kFill, int mode = 0,
               int level = 1) {
    g_way = way;
    g_wasEmpty = true;
    HostRecord record(scenes::Cut(m_scene, cv::Point(x, 150), cv::Size(240, 200)));
    const Outcome outcome = Ending([&] { stitcher.Stitching(record.get(), mode, level, 8); });
    EXPECT_TRUE(g_wasEmpty);
    g_way = Way::kFill;
    return outcome;
  }

  cv::Mat m_scene;
};

}  // namespace

TEST_F(Converter, GetsANewMatrixForEveryFrame) {
  JQImageStitching stitcher;
  for (int k = 0; k < 6; ++k) EXPECT_EQ(Feed(stitcher, 100 + 60 * k), Outcome::kReturned);
  EXPECT_EQ(stitcher.GetFrameCount(), 6);
}

// No older frame is placed in its stead.
TEST_F(Converter, ThatLeavesTheMatrixAloneFailsTheCall) {
  for (const int level : {1, 2}) {
    for (const int mode : {0, 1}) {
      JQImageStitching stitcher;
      for (int k = 0; k < 4; ++k) Feed(stitcher, 100 + 60 * k, Way::kFill, mode, level);
      const RunState before(stitcher);
      EXPECT_EQ(Feed(stitcher, 340, Way::kLeaveAlone, mode, level), Outcome::kImageLibraryError);
      EXPECT_TRUE(before.IsStillThatOf(stitcher, RunState::kWithCurrentFrame));
      EXPECT_EQ(stitcher.GetLastVerdict().cause, JQFrameCause::kCallFailed);
      EXPECT_EQ(Feed(stitcher, 340, Way::kFill, mode, level), Outcome::kReturned);
    }
  }
}

// The run has begun with a frame of no pixels, and no frame fits to that one.
TEST_F(Converter, ThatLeavesTheFirstMatrixAloneStartsARunThatNoFrameFits) {
  for (const int mode : {0, 1}) {
    JQImageStitching stitcher;
    EXPECT_EQ(Feed(stitcher, 100, Way::kLeaveAlone, mode), Outcome::kReturned);
    for (int k = 0; k < 2; ++k) {
      EXPECT_EQ(Feed(stitcher, 160, Way::kFill, mode), Outcome::kImageLibraryError);
      EXPECT_TRUE(stitcher.GetMosaic().empty());
      EXPECT_FALSE(stitcher.IsLastFrameAccepted());
      EXPECT_FALSE(stitcher.CutEdge());
    }
  }
}

TEST_F(Converter, MayAssignAMatrixOfItsOwn) {
  JQImageStitching stitcher, control;
  for (int k = 0; k < 5; ++k) {
    EXPECT_EQ(Feed(stitcher, 100 + 60 * k, Way::kAssign), Outcome::kReturned);
    Feed(control, 100 + 60 * k);
  }
  EXPECT_EQ(stitcher.GetFrameCount(), 5);
  EXPECT_TRUE(SameMatrix(stitcher.GetMosaic(), control.GetMosaic()));
}

// A frame's memory is not used again while somebody looks at it.
TEST_F(Converter, MayKeepAHeader) {
  cv::Mat copy;
  {
    JQImageStitching stitcher;
    Feed(stitcher, 100);
    Feed(stitcher, 106, Way::kKeepAHeader);
    ASSERT_FALSE(stitcher.IsLastFrameAccepted());
    copy = g_kept.clone();
    for (int k = 1; k < 5; ++k) Feed(stitcher, 100 + 60 * k);
    EXPECT_TRUE(SameMatrix(g_kept, copy));
  }
  EXPECT_TRUE(SameMatrix(g_kept, copy));
}
