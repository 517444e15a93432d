#include "stitcher/frame_pool.h"

#include <gtest/gtest.h>

#include <thread>

#include "support/host_record.h"
#include "support/stitcher_access.h"

namespace {

using jqstitching::FramePool;
using jqstitching::FramePoolUser;

const unsigned char* MakeAndDrop(int rows, int cols) {
  cv::Mat matrix = FramePool::Instance().newMatrix();
  matrix.create(rows, cols, CV_8UC3);
  return matrix.data;
}

}  // namespace

TEST(FramePool, GivesTheSameMemoryAgain) {
  const FramePoolUser user;
  const unsigned char* first = MakeAndDrop(200, 300);
  EXPECT_EQ(MakeAndDrop(200, 300), first);
  // What counts is the number of bytes; the matrix is laid out anew.
  cv::Mat other = FramePool::Instance().newMatrix();
  other.create(300, 200, CV_8UC3);
  EXPECT_EQ(other.data, first);
  EXPECT_EQ(other.step[0], 600u);
  EXPECT_TRUE(other.isContinuous());
  other.setTo(cv::Scalar::all(9));
  EXPECT_EQ(cv::countNonZero(other.reshape(1)), 300 * 600);
}

TEST(FramePool, NeverGivesMemoryThatAHeaderStillHolds) {
  const FramePoolUser user;
  cv::Mat one = FramePool::Instance().newMatrix();
  one.create(200, 300, CV_8UC3);
  const cv::Mat kept = one;
  one.release();
  EXPECT_NE(MakeAndDrop(200, 300), kept.data);
}

TEST(FramePool, AMatrixOutlivesTheLastStitcher) {
  cv::Mat kept;
  {
    const FramePoolUser user;
    kept = FramePool::Instance().newMatrix();
    kept.create(50, 60, CV_8UC3);
    kept.setTo(cv::Scalar::all(5));
  }
  EXPECT_EQ(cv::sum(kept)[0], 5 * 50 * 60);
  kept.create(20, 30, CV_8UC1);  // an old header may be used for something else
  kept.setTo(cv::Scalar::all(6));
  EXPECT_EQ(cv::sum(kept)[0], 6 * 20 * 30);
}

// The pool keeps the memory of the others' frames, and what a host still holds of the
// dead one's.
TEST(FramePool, OneOfSeveralStitchersDies) {
  const auto feed = [](JQImageStitching& stitcher, int grey) {
    HostRecord record(cv::Mat(40, 50, CV_8UC3, cv::Scalar::all(grey)));
    stitcher.Stitching(record.get(), 1, 1, 8);
    EXPECT_EQ(cv::sum(inside::CurFrame(stitcher))[2], grey * 40.0 * 50.0);
  };
  JQImageStitching first, last;
  cv::Mat kept;
  {
    JQImageStitching middle;
    for (int grey = 60; grey < 64; ++grey) {
      feed(first, grey);
      feed(middle, grey + 10);
      feed(last, grey + 20);
    }
    kept = inside::CurFrame(middle);
  }
  for (int grey = 64; grey < 68; ++grey) {
    feed(last, grey + 20);
    feed(first, grey);
    EXPECT_EQ(cv::sum(kept)[0], 73.0 * 40 * 50);
  }
}

TEST(FramePool, ServesStitchersOnSeveralThreads) {
  const auto work = [](int seed) {
    for (int round = 0; round < 20; ++round) {
      JQImageStitching stitcher;
      for (int k = 0; k < 5; ++k) {
        const cv::Mat frame(40 + seed, 50, CV_8UC3, cv::Scalar::all(60 + k + seed));
        HostRecord record(frame);
        stitcher.Stitching(record.get(), 1, 1, 8);
        EXPECT_EQ(cv::sum(inside::CurFrame(stitcher))[1],
                  (60.0 + k + seed) * static_cast<double>(frame.total()));
      }
    }
  };
  std::thread other(work, 1);
  work(0);
  other.join();
}
