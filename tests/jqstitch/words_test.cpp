// The sentences of the program, on results written by hand: no run is needed to read them.
#include <gtest/gtest.h>

#include "words/frame_list.h"
#include "words/frame_words.h"
#include "words/live_status.h"
#include "words/run_words.h"
#include "words/sample_words.h"
#include "words/summary.h"

namespace jqstitch_test {
namespace {

using jqhost::Cause;
using jqhost::DoubtReason;
using jqhost::FrameResult;
using jqhost::PlacementDoubt;
using jqhost::RunRecord;

FrameResult Frame(int number, Cause cause) {
  FrameResult frame;
  frame.name = "f" + std::to_string(number) + ".png";
  frame.number = number;
  frame.cause = cause;
  return frame;
}

FrameResult Placed(int number, cv::Point place) {
  FrameResult frame = Frame(number, Cause::kPlaced);
  frame.position = place;
  return frame;
}

// A frame that was measured: so many agreeing matches, moved by `offset`.
FrameResult Measured(int number, Cause cause, int matches, cv::Point offset) {
  FrameResult frame = Frame(number, cause);
  frame.measured.registered = true;
  frame.measured.matchCount = matches;
  frame.measured.offset = offset;
  return frame;
}

FrameResult Doubtful(DoubtReason reason, cv::Point rivalShift, cv::Point2d period) {
  FrameResult frame = Placed(2, {5, 6});
  frame.doubt = PlacementDoubt{0.2, true, reason, 0.5, 0.6, rivalShift, period};
  return frame;
}

RunRecord Live(const std::vector<FrameResult>& frames) {
  RunRecord record;
  record.live = true;
  record.frames = frames;
  record.workingSize = cv::Size(200, 100);
  record.frameSize = cv::Size(200, 100);
  return record;
}

bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST(FrameWords, DoubtSaysWhy) {
  EXPECT_EQ(jqstitch::NoteText(Doubtful(DoubtReason::kContradicted, {12, -7}, {})),
            "doubtful: a shift of 12, -7 would fit the frame before better");
  EXPECT_EQ(jqstitch::NoteText(Doubtful(DoubtReason::kRepeats, {}, {30, 40})),
            "doubtful: the scene repeats itself every 50 pixels");
  EXPECT_EQ(jqstitch::NoteText(Doubtful(DoubtReason::kRepeats, {}, {})),
            "doubtful: other shifts fit the frame before as well");
  EXPECT_EQ(jqstitch::NoteText(Doubtful(DoubtReason::kUnsupported, {}, {})),
            "doubtful: it is hardly like the frame before where they overlap");
  EXPECT_EQ(jqstitch::NoteText(Placed(2, {})), "");
  FrameResult inherited = Placed(2, {});
  inherited.inherited = true;
  EXPECT_EQ(jqstitch::RunWords().Note(inherited),
            "it shows no corners and was placed by the frame before it; check it");
}

TEST(FrameWords, ATakenBackFrameIsExplainedAndHasAdvice) {
  FrameResult frame = Doubtful(DoubtReason::kUnsupported, {}, {});
  frame.cause = Cause::kTakenBack;
  const RunRecord record = Live({frame});
  EXPECT_EQ(jqstitch::ReasonText(record, frame),
            "taken back, doubtful: it is hardly like the frame before where they overlap");
  EXPECT_EQ(jqstitch::AdviceText(record, frame),
            "go back to where the frame before was placed, or take it with --doubtful keep");
}

TEST(FrameWords, AdviceForWhatNeverCameToTheStitcher) {
  const RunRecord record = Live({});
  const auto advice = [&record](Cause cause) {
    return jqstitch::AdviceText(record, Frame(2, cause));
  };
  EXPECT_EQ(advice(Cause::kUnreadable), "check the file, or leave it out");
  EXPECT_EQ(advice(Cause::kSizeDiffers), "give frames of one size");
  EXPECT_EQ(advice(Cause::kFailed), "leave it out, or report it");
  EXPECT_EQ(advice(Cause::kPlaced), "");
  EXPECT_EQ(advice(Cause::kNotReached), "");
}

// Every comparison has its own two numbers, in their order.
TEST(OverlapWords, TheTestSaysWhatItFound) {
  FrameResult frame = Frame(2, Cause::kOverlapTestFailed);
  const RunRecord record = Live({frame});
  const auto reason = [&] { return jqstitch::ReasonText(record, frame); };
  EXPECT_EQ(reason(),
            "overlap test failed: where the previous measurement pointed there is no picture to "
            "compare with");
  frame.measured.brightness = 3.0F;
  frame.measured.brightnessLimit = 8.0F;
  EXPECT_EQ(reason(),
            "overlap test failed: where the previous measurement pointed there is no detail to "
            "compare");
  frame.measured.definition = 12.25F;
  frame.measured.definitionLimit = 4.0F;
  EXPECT_EQ(reason(),
            "overlap test failed: where the previous measurement pointed, sharpness differs by "
            "12.2 (limit 4)");
  frame.measured.brightness = 9.5F;
  EXPECT_EQ(reason(),
            "overlap test failed: where the previous measurement pointed, brightness differs by "
            "9.5 (limit 8) grey levels");
  frame.measured.motion = 21.5F;
  frame.measured.motionLimit = 20.0F;
  frame.measured.registered = true;
  frame.measured.matchCount = 4;
  EXPECT_EQ(reason(),
            "overlap test failed: the view changed by 21.5 (limit 20) grey levels since the frame "
            "before; only 4 of 11 matches besides");
}

TEST(OverlapWords, AnotherExposureAndAnotherFocusAreToldInEitherDirection) {
  FrameResult frame = Measured(2, Cause::kOverlapTestFailed, 30, {4, 0});
  RunRecord record = Live({});
  const auto advice = [&](double brightness, double sharpness) {
    frame.appearance = jqhost::Appearance{brightness, sharpness};
    return jqstitch::AdviceText(record, frame);
  };
  EXPECT_EQ(advice(0.75, 1),
            "the exposure changed (-25 % beside the picture so far): keep it steady, or use "
            "jqstitch batch");
  EXPECT_EQ(advice(1, 0.5),
            "the focus changed (fine detail -50 % beside the picture so far): keep it steady, or "
            "use jqstitch batch");
  EXPECT_TRUE(Contains(advice(1, 1.5), "the focus changed (fine detail +50 %"));
  record.fromFiles = false;
  EXPECT_EQ(advice(1.25, 1),
            "the exposure changed (+25 % beside the picture so far): keep it steady");
}

// Frames 20 pixels of 200 apart: 10 %.
TEST(OverlapWords, LargeStepsAreToldWithTheirMedian) {
  RunRecord record =
      Live({Placed(1, {0, 0}), Placed(2, {20, 0}), Placed(3, {40, 0}), Placed(4, {60, 0})});
  const FrameResult seen = Measured(5, Cause::kOverlapTestFailed, 30, {20, 0});
  const FrameResult few = Measured(5, Cause::kTooFewMatches, 4, {20, 0});
  const std::string steps =
      "the steps from frame to frame (median 10.0 %) are too large for a live run: ";
  EXPECT_EQ(jqstitch::AdviceText(record, seen), steps + "use jqstitch batch");
  // A batch run wants as many matches.
  EXPECT_EQ(jqstitch::AdviceText(record, few), steps + "move in steps of 1 to 5 %");
  record.fromFiles = false;
  EXPECT_EQ(jqstitch::AdviceText(record, seen), steps + "move in steps of 1 to 5 %");
  // Steps that are small enough are not blamed.
  record.frames = {Placed(1, {0, 0}), Placed(2, {8, 0}), Placed(3, {16, 0}), Placed(4, {24, 0})};
  EXPECT_FALSE(Contains(jqstitch::AdviceText(record, seen), "steps"));
}

TEST(LiveStatus, TellsWhereToGoBackToAndTheCounts) {
  const RunRecord record = Live({});
  jqhost::Track track;
  const auto add = [&](const FrameResult& frame) {
    track.Add(frame);
    return jqstitch::StatusText(record, track, frame, 1499999);
  };
  add(Placed(1, {}));
  FrameResult slow = Measured(2, Cause::kShiftTooSmall, 40, {9, 0});
  slow.shiftShare = 0.045;
  EXPECT_EQ(add(slow), "tracked, shift of 4.5 % (1 placed, 1 tracked), 1 MB");
  EXPECT_EQ(add(Measured(3, Cause::kTooFewMatches, 3, {})),
            "lost since frame 3: too few matches (3 of 11); go back to where frame 2 was "
            "(1 placed, 1 tracked, 1 lost), 1 MB");
  // An unusable frame does not say why the track is lost.
  EXPECT_EQ(add(Frame(4, Cause::kUnreadable)),
            "lost since frame 3; go back to where frame 2 was "
            "(1 placed, 1 tracked, 1 lost, 1 unusable), 1 MB");
}

TEST(FrameList, FramesOfOneCauseShareALineWithTheRangeOfItsNumber) {
  const RunRecord record = Live({Placed(1, {0, 0}), Measured(2, Cause::kTooFewMatches, 5, {}),
                                 Measured(3, Cause::kTooFewMatches, 2, {}),
                                 Measured(4, Cause::kTooFewMatches, 9, {}), Placed(5, {30, 4})});
  EXPECT_EQ(jqstitch::FrameListText(record),
            "  f1.png: placed at 0, 0\n"
            "  f2.png to f4.png: 3 frames lost: too few matches (2 to 9 of 11)\n"
            "  f5.png: placed at 30, 4\n");
}

TEST(FrameList, NoMoreThanTenLossesAreToldOneByOne) {
  std::vector<FrameResult> frames;
  for (int i = 0; i < 12; ++i) {
    frames.push_back(Placed(2 * i + 1, {20 * i, 0}));
    frames.push_back(Frame(2 * i + 2, Cause::kNoCorners));
  }
  const std::string text = jqstitch::LossText(Live(frames));
  EXPECT_TRUE(Contains(text, "Track lost at frame 20, beside frame 19")) << text;
  EXPECT_FALSE(Contains(text, "Track lost at frame 22")) << text;
  EXPECT_TRUE(Contains(text, "\nTrack lost 2 more times\n")) << text;
}

TEST(Summary, CountsWhatBecameOfTheFrames) {
  RunRecord record = Live({Placed(1, {}), Measured(2, Cause::kShiftTooSmall, 30, {5, 0}),
                           Frame(3, Cause::kUnreadable), Frame(4, Cause::kNoCorners),
                           Frame(5, Cause::kNoCorners), Placed(6, {30, 0})});
  record.skipped = 7;
  record.seconds = 1.25;
  const std::string text = jqstitch::SummaryText(record);
  EXPECT_TRUE(Contains(
      text, "Some lost: 2 of 6 frames placed, 1 tracked, 2 lost, 1 unusable, 1.2 s (7 passed over"))
      << text;
  EXPECT_TRUE(Contains(text, "\n2 x no corners found: ")) << text;
  EXPECT_TRUE(Contains(text, "\n1 x unreadable: check the file, or leave it out")) << text;
  record.frames = {Placed(1, {}), Placed(2, {})};
  record.announced = 5;
  record.given = 2;
  EXPECT_EQ(jqstitch::OutcomeText(record).rfind("Ended early: 2 of 2 frames placed", 0), 0u)
      << jqstitch::OutcomeText(record);
}

TEST(Summary, TellsThePositionErrorsAndThePicture) {
  RunRecord record = Live({Placed(1, {}), Placed(2, {30, 0}), Placed(3, {60, 0})});
  jqhost::TruthComparison truth;
  truth.errors.resize(2);
  truth.unknown = 1;
  truth.neighbourMedian = 0.5;
  truth.neighbourMaximum = 1.5;
  truth.neighbourAxisMaximum = 1.25;
  truth.absoluteMedian = 2.5;
  truth.absoluteMaximum = 3.5;
  record.truth = truth;
  record.picture = "mosaic.png";
  record.pictureSize = cv::Size(260, 100);
  record.trimmedBy = "nothing";
  EXPECT_TRUE(
      Contains(jqstitch::SummaryText(record),
               "Position error in pixels: to the neighbour placed before, median 0.50, maximum "
               "1.50 (along an axis 1.25); to the first frame, median 2.50, maximum 3.50\n"
               "  (1 placed frames are not in the truth)\n"
               "Picture: mosaic.png, 260 x 100 pixels, not trimmed"))
      << jqstitch::SummaryText(record);
}

TEST(SampleWords, TheDepthAndWhatWasCutOff) {
  jqhost::PreparationSettings settings;
  jqhost::FramePreparation found(settings);
  found.Prepare(cv::Mat(4, 4, CV_16UC1, cv::Scalar(1000)));
  EXPECT_EQ(jqstitch::SampleNotes(found),
            (std::vector<std::string>{
                "Samples of 16 bits, 10 of them significant, as the first frame tells"}));
  settings.depth = 10;
  jqhost::FramePreparation given(settings);
  given.Prepare(cv::Mat(4, 4, CV_16UC1, cv::Scalar(1024)));
  const std::string said = "Samples of 16 bits, 10 of them significant, as --depth says";
  const std::string cut =
      "Brighter than 10 bits can tell, and cut off there: samples in 1 frame; give the camera's "
      "--depth";
  EXPECT_EQ(jqstitch::SampleNotes(given), (std::vector<std::string>{said, cut}));
  given.Prepare(cv::Mat(4, 4, CV_16UC1, cv::Scalar(2000)));
  EXPECT_TRUE(Contains(jqstitch::SampleNotes(given).at(1), "samples in 2 frames;"));
}

}  // namespace
}  // namespace jqstitch_test
