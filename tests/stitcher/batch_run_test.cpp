#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QTranslator>
#include <set>
#include <thread>

#include "batch_files.h"
#include "support/compare.h"
#include "support/outcome.h"
#include "support/scenes.h"
#include "support/stitcher_access.h"

namespace {

using Texts = std::vector<std::string>;

const cv::Size kFrame(200, 160);

cv::Mat Scene() {
  RandomSource random(11);
  return scenes::Dense(random, 700, 900);
}

cv::Mat Flat(int level, cv::Size size = kFrame) {
  return cv::Mat(size, CV_8UC3, cv::Scalar::all(level));
}

}  // namespace

TEST(BatchRun, OneFileOnAFreshStitcher) {
  BatchFiles files;
  files.Add(Flat(9));
  JQImageStitching stitcher;
  const BatchRun run(stitcher, files.paths());
  ASSERT_TRUE(run.invoked);
  EXPECT_EQ(run.texts(), Texts{"Image Stitching 1/1"});
  ASSERT_EQ(run.finished().size(), 1u);
  EXPECT_EQ(run.finished()[0], &inside::CurFrame(stitcher));
  EXPECT_TRUE(run.finished()[0]->empty());
  EXPECT_EQ(inside::RefFrame(stitcher).size(), kFrame);
  EXPECT_TRUE(stitcher.IsLastFrameAccepted());
  EXPECT_EQ(stitcher.GetPlacedBounds(), cv::Rect());
}

TEST(BatchRun, ThreeFilesOfWhichNoneIsAccepted) {
  BatchFiles files;
  for (int level : {9, 9, 9}) files.Add(Flat(level));
  JQImageStitching stitcher;
  const BatchRun run(stitcher, files.paths());
  EXPECT_EQ(run.texts(),
            (Texts{"Image Stitching 1/3", "Image Stitching 2/3", "Image Stitching 3/3"}));
  ASSERT_EQ(run.finished().size(), 1u);
  // The trimmed mosaic is the first file.
  EXPECT_TRUE(SameMatrix(*run.finished()[0], Flat(9)));
  EXPECT_EQ(stitcher.GetFrameCount(), 1);
  EXPECT_FALSE(stitcher.IsLastFrameAccepted());
  EXPECT_EQ(run.memorySignals(), 0);
}

TEST(BatchRun, SizesThatDifferRefuseTheRun) {
  BatchFiles files;
  files.Add(Flat(9));
  files.Add(Flat(9, cv::Size(200, 161)));
  JQImageStitching stitcher;
  inside::FrameCount(stitcher) = 77;
  const BatchRun run(stitcher, files.paths());
  EXPECT_TRUE(run.texts().empty());
  EXPECT_EQ(run.finished(), std::vector<cv::Mat*>{nullptr});
  EXPECT_EQ(run.memorySignals(), 0);
  // Nothing else has changed.
  EXPECT_EQ(inside::FrameCount(stitcher), 77);
  EXPECT_TRUE(inside::CurFrame(stitcher).empty());
}

TEST(BatchRun, EmptyListRefusesTheRun) {
  JQImageStitching stitcher;
  const BatchRun run(stitcher, {});
  EXPECT_TRUE(run.texts().empty());
  EXPECT_EQ(run.finished(), std::vector<cv::Mat*>{nullptr});
}

TEST(BatchRun, UnreadableFileRefusesTheRun) {
  BatchFiles files;
  files.Add(Flat(9));
  files.AddPath(files.filePath("missing.png"));
  JQImageStitching stitcher;
  const BatchRun run(stitcher, files.paths());
  EXPECT_TRUE(run.texts().empty());
  EXPECT_EQ(run.finished(), std::vector<cv::Mat*>{nullptr});
}

TEST(BatchRun, StartSetsTheEngineAndTheBounds) {
  BatchFiles files;
  files.Add(Flat(9));
  JQImageStitching stitcher;
  inside::Reserved(stitcher) = 5;
  inside::Algorithm(stitcher)->SetParameter(3, 1, 1, 1);
  BatchRun(stitcher, files.paths());
  EXPECT_EQ(inside::Algorithm(stitcher)->m_nDetectLevel, 1);
  EXPECT_EQ(inside::Algorithm(stitcher)->m_nCornerBudget, 8);
  EXPECT_EQ(inside::Algorithm(stitcher)->m_nOverlapMode, 0);
  EXPECT_EQ(inside::Algorithm(stitcher)->m_nUsePresets, 0);
  EXPECT_EQ(inside::MinOverlap(stitcher), 0.1f);
  EXPECT_EQ(inside::MaxOverlap(stitcher), 0.9f);
  EXPECT_EQ(inside::FrameCount(stitcher), 0);
  EXPECT_EQ(inside::Reserved(stitcher), 0);
}

TEST(BatchRun, PlacesFilesAndHandsOverTheTrimmedMosaic) {
  const cv::Mat scene = Scene();
  BatchFiles files;
  for (int i = 0; i < 4; ++i)
    files.Add(scenes::Cut(scene, cv::Point(300 + 60 * i, 200 + 10 * i), kFrame));
  JQImageStitching stitcher;
  const BatchRun run(stitcher, files.paths());
  EXPECT_EQ(stitcher.GetFrameCount(), 4);
  EXPECT_NEAR(stitcher.GetPlacedBounds().width, 200 + 180, 12);
  EXPECT_NEAR(stitcher.GetPlacedBounds().height, 160 + 30, 12);
  ASSERT_EQ(run.finished().size(), 1u);
  const cv::Mat picture = *run.finished()[0];
  EXPECT_EQ(picture.size(), stitcher.GetCurSize());
  EXPECT_TRUE(SameMatrix(
      picture, stitcher.GetMosaic()(cv::Rect(stitcher.GetContentMin(), stitcher.GetContentMax()))));
  EXPECT_NE(picture.u, stitcher.GetMosaic().u);
  // Where no other frame lies, the newest one stands as it came.
  const cv::Point corner = stitcher.GetCurrentPosition() - stitcher.GetContentMin();
  EXPECT_TRUE(SameMatrix(picture(cv::Rect(corner + cv::Point(150, 20), cv::Size(50, 140))),
                         scene(cv::Rect(480 + 150, 230 + 20, 50, 140))));
}

// In a live run an accepted frame leaves (0, 0).
TEST(BatchRun, AcceptedFileKeepsItsOffsetInTheRecord) {
  const cv::Mat scene = Scene();
  BatchFiles files;
  files.Add(scenes::Cut(scene, cv::Point(300, 200), kFrame));
  files.Add(scenes::Cut(scene, cv::Point(360, 210), kFrame));
  JQImageStitching stitcher;
  BatchRun(stitcher, files.paths());
  ASSERT_EQ(stitcher.GetFrameCount(), 2);
  EXPECT_NEAR(stitcher.GetOffsetPosition().x, 60, 4);
  EXPECT_NEAR(stitcher.GetOffsetPosition().y, 10, 4);
  // The first file stands at (100, 80), and nothing grew at the top or left.
  EXPECT_EQ(stitcher.GetCurrentPosition() - stitcher.GetOffsetPosition(), cv::Point(100, 80));
}

// The live run's own members stay out of it.
TEST(BatchRun, TouchesNeitherVerdictMemberNorRecord) {
  const cv::Mat scene = Scene();
  BatchFiles files;
  files.Add(scenes::Cut(scene, cv::Point(300, 200), kFrame));
  files.Add(scenes::Cut(scene, cv::Point(360, 210), kFrame));
  JQImageStitching stitcher;
  inside::LastFrameAccepted(stitcher) = false;
  BatchRun(stitcher, files.paths());
  ASSERT_EQ(stitcher.GetFrameCount(), 2);
  EXPECT_FALSE(inside::LastFrameAccepted(stitcher));
  EXPECT_EQ(inside::OutImage(stitcher), nullptr);
  EXPECT_TRUE(stitcher.IsLastFrameAccepted());
}

TEST(BatchRun, CurrentFrameStaysTheFirstFileUntilTheEnd) {
  const cv::Mat scene = Scene();
  BatchFiles files;
  for (int i = 0; i < 3; ++i) files.Add(scenes::Cut(scene, cv::Point(300 + 60 * i, 200), kFrame));
  JQImageStitching stitcher;
  std::vector<cv::Mat> seen;
  QObject::connect(&stitcher, &JQImageStitching::sglMultiImageProcessStatus,
                   [&] { seen.push_back(inside::CurFrame(stitcher).clone()); });
  BatchRun(stitcher, files.paths());
  ASSERT_EQ(seen.size(), 3u);
  const cv::Mat first = scenes::Cut(scene, cv::Point(300, 200), kFrame);
  for (const cv::Mat& frame : seen) EXPECT_TRUE(SameMatrix(frame, first));
}

TEST(BatchRun, AccessorsTellAReceiverTheVerdictOfEachFile) {
  const cv::Mat scene = Scene();
  BatchFiles files;
  files.Add(scenes::Cut(scene, cv::Point(100, 100), kFrame));
  files.Add(scenes::Cut(scene, cv::Point(160, 100), kFrame));
  files.Add(scenes::Cut(scene, cv::Point(600, 450), kFrame));  // far from all others
  files.Add(scenes::Cut(scene, cv::Point(220, 100), kFrame));
  JQImageStitching stitcher;
  std::vector<bool> accepted;
  std::vector<int> counts;
  std::vector<int> widths;
  QObject::connect(&stitcher, &JQImageStitching::sglMultiImageProcessStatus, [&] {
    accepted.push_back(stitcher.IsLastFrameAccepted());
    counts.push_back(stitcher.GetFrameCount());
    widths.push_back(stitcher.GetPlacedBounds().width);
  });
  BatchRun(stitcher, files.paths());
  EXPECT_EQ(accepted, (std::vector<bool>{true, true, false, true}));
  EXPECT_EQ(counts, (std::vector<int>{0, 2, 2, 3}));
  ASSERT_EQ(widths.size(), 4u);
  EXPECT_EQ(widths[0], 0);
  EXPECT_NEAR(widths[1], 260, 4);
  EXPECT_EQ(widths[2], widths[1]);
  EXPECT_NEAR(widths[3], 320, 8);
}

TEST(BatchRun, SecondRunOnOneStitcherBeginsANewMosaic) {
  const cv::Mat scene = Scene();
  BatchFiles wide;
  for (int i = 0; i < 3; ++i) wide.Add(scenes::Cut(scene, cv::Point(300 + 60 * i, 200), kFrame));
  BatchFiles flat;
  for (int i = 0; i < 2; ++i) flat.Add(Flat(9, cv::Size(60, 40)));
  JQImageStitching stitcher;
  BatchRun(stitcher, wide.paths());
  ASSERT_EQ(stitcher.GetFrameCount(), 3);
  const stitchflags left = stitcher.GetStitchFlags();
  ASSERT_NE(left.offsetX, 0);
  // The record is not reset: the first overlap test of this run looks at the offset
  // that the last one left, which for these small frames lies outside of them.
  EXPECT_EQ(Ending([&] { BatchRun(stitcher, flat.paths()); }), Outcome::kImageLibraryError);
  inside::Flags(stitcher) = stitchflags();
  const BatchRun second(stitcher, flat.paths());
  EXPECT_EQ(second.texts().size(), 2u);
  EXPECT_EQ(stitcher.GetFrameCount(), 1);
  EXPECT_EQ(stitcher.GetPlacedBounds(), cv::Rect(30, 20, 60, 40));
  EXPECT_EQ(second.finished()[0]->size(), cv::Size(60, 40));
}

TEST(BatchRun, OneFileAfterARunHandsOverTheOldMosaic) {
  BatchFiles two;
  for (int i = 0; i < 2; ++i) two.Add(Flat(9));
  BatchFiles one;
  one.Add(Flat(30));
  JQImageStitching stitcher;
  BatchRun(stitcher, two.paths());
  const BatchRun run(stitcher, one.paths());
  EXPECT_TRUE(SameMatrix(*run.finished()[0], Flat(9)));
  EXPECT_EQ(stitcher.GetPlacedBounds(), cv::Rect());
}

TEST(BatchRun, ZeroSamplesOfAFileAreLifted) {
  BatchFiles files;
  files.Add(Flat(0));
  files.Add(Flat(0));
  JQImageStitching stitcher;
  const BatchRun run(stitcher, files.paths());
  EXPECT_TRUE(SameMatrix(*run.finished()[0], Flat(2)));
}

TEST(BatchRun, GreyFilesAreReadInColour) {
  BatchFiles files;
  for (int i = 0; i < 2; ++i) files.Add(cv::Mat(kFrame, CV_8UC1, cv::Scalar(40)));
  JQImageStitching stitcher;
  const BatchRun run(stitcher, files.paths());
  EXPECT_TRUE(SameMatrix(*run.finished()[0], Flat(40)));
}

TEST(BatchRun, SlotCanRunOnAnotherThread) {
  const cv::Mat scene = Scene();
  BatchFiles files;
  for (int i = 0; i < 2; ++i) files.Add(scenes::Cut(scene, cv::Point(300 + 60 * i, 200), kFrame));
  JQImageStitching stitcher;
  int finished = 0;
  QObject::connect(&stitcher, &JQImageStitching::sglMultiImageProcessFinished,
                   [&](void* dst) { finished += dst != nullptr; });
  stitcher.m_fileList = files.paths();
  std::thread worker(
      [&] { QMetaObject::invokeMethod(&stitcher, "slotStartStitching", Qt::DirectConnection); });
  worker.join();
  EXPECT_EQ(finished, 1);
  EXPECT_EQ(stitcher.GetFrameCount(), 2);
}

// Between the check of the sizes and its turn. The empty matrix is passed on as it
// is, which raises the image library's error; what is stitched stays.
TEST(BatchRun, FileThatVanishesDuringTheRun) {
  const cv::Mat scene = Scene();
  BatchFiles files;
  for (int i = 0; i < 4; ++i) files.Add(scenes::Cut(scene, cv::Point(300 + 60 * i, 200), kFrame));
  JQImageStitching stitcher;
  int texts = 0;
  QObject::connect(&stitcher, &JQImageStitching::sglMultiImageProcessStatus, [&] {
    if (++texts == 2) {
      EXPECT_TRUE(QFile::remove(files.paths()[2]));
    }
  });
  EXPECT_EQ(Ending([&] { BatchRun(stitcher, files.paths()); }), Outcome::kImageLibraryError);
  EXPECT_EQ(texts, 2);
  EXPECT_EQ(stitcher.GetFrameCount(), 2);
  EXPECT_FALSE(stitcher.IsLastFrameAccepted());
  EXPECT_NEAR(stitcher.GetPlacedBounds().width, 260, 4);
  EXPECT_TRUE(stitcher.CutEdge());
}

namespace {

class UpperCase : public QTranslator {
 public:
  bool isEmpty() const override { return false; }
  QString translate(const char* context, const char* text, const char*, int) const override {
    contexts.insert(context);
    return QString(text).toUpper();
  }
  mutable std::set<std::string> contexts;
};

}  // namespace

TEST(BatchRun, TheTwoFixedPartsAreTranslatedInTheContextOfQObject) {
  int argc = 1;
  char name[] = "test";
  char* argv[] = {name, nullptr};
  QCoreApplication application(argc, argv);
  UpperCase translator;
  QCoreApplication::installTranslator(&translator);
  BatchFiles files;
  for (int i = 0; i < 2; ++i) files.Add(Flat(9));
  JQImageStitching stitcher;
  const BatchRun run(stitcher, files.paths());
  EXPECT_EQ(run.texts(), (Texts{"IMAGE STITCHING 1/2", "IMAGE STITCHING 2/2"}));
  EXPECT_EQ(translator.contexts, std::set<std::string>{"QObject"});
}
