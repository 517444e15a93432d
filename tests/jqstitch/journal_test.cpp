// Runs that are recorded, killed, taken up again and verified, as a user does it.
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "jqstitch/run_program.h"
#include "jqstitch/running_program.h"
#include "jqstitch/scene_frames.h"

namespace jqstitch_test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using Strings = std::vector<std::string>;

Strings With(Strings arguments, const Strings& more) {
  arguments.insert(arguments.end(), more.begin(), more.end());
  return arguments;
}

bool SamePicture(const std::string& a, const std::string& b) {
  const cv::Mat first = ReadPictureFile(a), second = ReadPictureFile(b);
  return first.size() == second.size() && first.type() == second.type() &&
         cv::norm(first, second, cv::NORM_INF) == 0;
}

bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// Eight frames, every one of which is placed.
class Journal : public testing::Test {
 protected:
  void SetUp() override {
    m_frames = WriteWalk(m_pass.Path(), 8, {40, 12});
    const Outcome recorded = Live({"--journal", m_journal});
    ASSERT_EQ(recorded.exitCode, 0) << recorded.err;
    EXPECT_TRUE(Contains(recorded.err, "Journal: " + m_journal + ", 8 frames recorded"))
        << recorded.err;
  }

  Outcome Live(const Strings& more) const {
    return RunProgram(With({"live", m_pass.Path(), "-o", m_out / "live.png"}, more));
  }
  Outcome Resume(const Strings& more) const {
    return RunProgram(With({"resume", m_journal, "-o", m_out / "again.png"}, more));
  }
  Outcome Verify(const Strings& more = {}) const {
    return RunProgram(With({"verify", m_journal}, more));
  }

  TemporaryFolder m_pass, m_out;
  const std::string m_journal = m_out / "the run";  // with a space
  Strings m_frames;
};

TEST_F(Journal, ItsPictureAndReportAreMadeAgain) {
  const Outcome again = Resume({"--report", m_out / "again.json", "--json"});
  EXPECT_EQ(again.exitCode, 0) << again.err;
  EXPECT_TRUE(SamePicture(m_out / "live.png", m_out / "again.png"));
  const json report = ReadJson(m_out / "again.json");
  EXPECT_EQ(report["command"], "resume");
  ASSERT_EQ(report["list"].size(), 8u);
  EXPECT_EQ(report["list"][7]["position"], (json{{"x", 280}, {"y", 84}}));
  EXPECT_EQ(report["list"][7]["offset"], (json{{"x", 40}, {"y", 12}}));
  EXPECT_GT(report["list"][7]["confidence"], 0.9);
  const json resumed = EventsOf(again.out, "resumed").at(0);
  EXPECT_EQ(resumed["frames"], 8);
  EXPECT_EQ(resumed["lastFrame"], m_frames[7]);
  EXPECT_TRUE(EventsOf(again.out, "frame").empty());
}

TEST_F(Journal, VerifyComparesWithThePictureSavedLast) {
  const Outcome same = Verify({"--json"});
  EXPECT_EQ(same.exitCode, 0) << same.err;
  EXPECT_EQ(EventsOf(same.out, "verified").at(0)["same"], true);
  // One pixel, by one grey level.
  cv::Mat picture = ReadPictureFile(m_out / "live.png");
  unsigned char& sample = picture.at<cv::Vec3b>(20, 30)[1];
  sample = static_cast<unsigned char>(sample ^ 1);
  ASSERT_TRUE(cv::imwrite(m_out / "live.png", picture));
  const Outcome changed = Verify();
  EXPECT_EQ(changed.exitCode, 3);
  EXPECT_TRUE(Contains(changed.err, "1 pixel differs, within columns 30 to 30 and rows 20 to 20"))
      << changed.err;
  // What is drawn in and what a format loses is known, too.
  const Outcome jpeg = RunProgram({"resume", m_journal, "-o", m_out / "b.jpg", "--background",
                                   "9,99,200", "--no-trim", "--until", "5"});
  EXPECT_EQ(jpeg.exitCode, 0) << jpeg.err;
  EXPECT_EQ(Verify().exitCode, 0);
  const Outcome other = Verify({"--picture", m_out / "live.png"});
  EXPECT_EQ(other.exitCode, 3) << other.err;
  EXPECT_TRUE(Contains(other.err, "pixels instead of")) << other.err;
  fs::remove(m_out / "b.jpg");
  EXPECT_EQ(Verify().exitCode, 1);
}

#ifdef JQ_HAS_LIBVIPS
TEST_F(Journal, VerifyComparesEveryTile) {
  const std::string picture = m_out / "b.dzi";
  const Outcome saved = RunProgram({"resume", m_journal, "-o", picture});
  ASSERT_EQ(saved.exitCode, 0) << saved.err;
  EXPECT_EQ(Verify().exitCode, 0);
  // The level of 1 x 1 pixel, and the last one, whose corner is at (0, 0).
  const std::string smallest = m_out / "b_files/0/0_0.png";
  const cv::Mat whole = ReadPictureFile(smallest);
  ASSERT_EQ(whole.size(), cv::Size(1, 1));
  cv::Mat changed = whole.clone();
  changed.data[0] = static_cast<unsigned char>(changed.data[0] ^ 1);
  ASSERT_TRUE(cv::imwrite(smallest, changed));
  const Outcome other = Verify();
  EXPECT_EQ(other.exitCode, 3);
  EXPECT_TRUE(Contains(other.err, "its tile '0/0_0.png' is another one: 1 pixel differs"))
      << other.err;
  fs::remove(smallest);
  EXPECT_TRUE(Contains(Verify().err, "its tile '0/0_0.png' is missing"));
  ASSERT_TRUE(cv::imwrite(smallest, whole));
  ASSERT_TRUE(cv::imwrite(m_out / "b_files/0/0_1.png", whole));
  EXPECT_TRUE(Contains(Verify().err, "a tile '0/0_1.png' too many"));
  fs::remove(picture);
  EXPECT_EQ(Verify().exitCode, 1);
}
#endif

TEST_F(Journal, ACutRunGoesOnWithTheFramesThatFollow) {
  // Without more frames a cut is only for this picture.
  const Outcome until = Resume({"--until", "3"});
  EXPECT_EQ(until.exitCode, 0) << until.err;
  EXPECT_TRUE(Contains(until.err, "Left out of it: 4, 5, 6, 7, 8")) << until.err;
  const Outcome three = Live({"--max-frames", "3"});
  EXPECT_EQ(three.exitCode, 0) << three.err;
  EXPECT_TRUE(SamePicture(m_out / "live.png", m_out / "again.png"));
  EXPECT_EQ(Verify().exitCode, 0);

  const Outcome refused = Resume({"--drop", "3,4"});
  EXPECT_EQ(refused.exitCode, 1);
  EXPECT_TRUE(Contains(refused.err, "frames 3, 4 cannot be taken out: 5, 6, 7, 8 hang on them"))
      << refused.err;
  EXPECT_EQ(Resume({"--drop", "99"}).exitCode, 1);
  EXPECT_EQ(Resume({"--drop", "-1"}).exitCode, 2);

  // With the same source it goes on behind the frame recorded last.
  const Outcome on = Resume({m_pass.Path(), "--drop", "7,8", "--json"});
  EXPECT_EQ(on.exitCode, 0) << on.err;
  const std::vector<json> frames = EventsOf(on.out, "frame");
  ASSERT_EQ(frames.size(), 2u);
  EXPECT_EQ(frames[0]["name"], m_frames[6]);
  EXPECT_EQ(Live({}).exitCode, 0);
  EXPECT_TRUE(SamePicture(m_out / "live.png", m_out / "again.png"));
  EXPECT_EQ(Verify().exitCode, 0);
  EXPECT_EQ(fs::exists(m_journal + "/frames/000010.png"), true);
  // Another source is taken from its start.
  const Outcome others = Resume({m_frames[6], m_frames[7], "--until", "6", "--json"});
  EXPECT_EQ(others.exitCode, 0) << others.err;
  EXPECT_EQ(EventsOf(others.out, "frame").size(), 2u);
  EXPECT_TRUE(SamePicture(m_out / "live.png", m_out / "again.png"));
}

TEST_F(Journal, FramesOfAnotherSizeAndAChangedSourceAreTold) {
  cv::Mat small;
  cv::resize(ReadPictureFile(m_frames[0]), small, cv::Size(100, 90));
  ASSERT_TRUE(cv::imwrite(m_out / "small.png", small));
  const Outcome size = Resume({m_out / "small.png"});
  EXPECT_EQ(size.exitCode, 3) << size.err;
  EXPECT_TRUE(Contains(size.err, "size differs: 100 x 90 pixels instead of 320 x 240")) << size.err;
  fs::remove(m_frames[7]);
  const Outcome gone = Resume({m_pass.Path()});
  EXPECT_EQ(gone.exitCode, 1);
  EXPECT_TRUE(Contains(gone.err, "the source is not as it was")) << gone.err;
  EXPECT_EQ(Resume({m_pass / "nothing"}).exitCode, 1);
  EXPECT_EQ(Verify().exitCode, 0);
}

TEST_F(Journal, FoldersAndFilesThatCannotBeUsed) {
  const std::string before = ReadFile(m_journal + "/log.txt");
  const Outcome twice = Live({"--journal", m_journal});
  EXPECT_EQ(twice.exitCode, 1);
  EXPECT_TRUE(Contains(twice.err, "holds a journal already; go on with jqstitch resume"))
      << twice.err;
  EXPECT_TRUE(Contains(Live({"--journal", m_pass.Path()}).err, "holds other files"));
  EXPECT_TRUE(Contains(RunProgram({"resume", m_pass.Path(), "-o", m_out / "a.png"}).err,
                       "the folder holds none"));
  EXPECT_TRUE(Contains(RunProgram({"verify", m_out / "none"}).err, "there is no such folder"));
  const Outcome inside = RunProgram({"resume", m_journal, "-o", m_journal + "/frames/000001.png"});
  EXPECT_EQ(inside.exitCode, 1);
  EXPECT_TRUE(Contains(inside.err, "lies in the journal")) << inside.err;
  // A source that cannot be opened leaves no journal behind.
  EXPECT_EQ(RunProgram({"live", m_out / "none", "-o", m_out / "a.png", "--journal", m_out / "j"})
                .exitCode,
            1);
  EXPECT_FALSE(fs::exists(m_out / "j"));
  EXPECT_EQ(Live({"--journal-every", "3"}).exitCode, 2);
  EXPECT_EQ(ReadFile(m_journal + "/log.txt"), before);
}

// The run goes on, and the journal holds what could be written.
TEST_F(Journal, AFrameThatCannotBeWrittenEndsTheJournalButNotTheRun) {
  const std::string journal = m_out / "second";
  // A folder in the place of the fourth frame's: from there on nothing can be written.
  RunningProgram program({"live", m_pass.Path(), "-o", m_out / "full.png", "--journal", journal,
                          "--fps", "3", "--json"});
  ASSERT_TRUE(program.WaitForOutput("\"event\":\"frame\"", 1));
  fs::create_directory(journal + "/frames/000004.png");
  const Outcome full = program.Wait();
  EXPECT_EQ(full.exitCode, 1) << full.err;
  EXPECT_TRUE(Contains(full.err, "the journal '" + journal + "' ends after 3 frames: cannot write"))
      << full.err;
  EXPECT_TRUE(Contains(full.err, "; the run goes on without it")) << full.err;
  EXPECT_EQ(EventsOf(full.out, "journal").size(), 1u);
  EXPECT_TRUE(SamePicture(m_out / "live.png", m_out / "full.png"));
  const Outcome again =
      RunProgram({"resume", journal, m_pass.Path(), "-o", m_out / "again.png", "-q"});
  EXPECT_EQ(again.exitCode, 1) << again.err;  // the folder is still in the way
  fs::remove(journal + "/frames/000004.png");
  EXPECT_EQ(
      RunProgram({"resume", journal, m_pass.Path(), "-o", m_out / "again.png", "-q"}).exitCode, 0);
  EXPECT_TRUE(SamePicture(m_out / "live.png", m_out / "again.png"));
}

TEST_F(Journal, AnInterruptedRunIsWhole) {
  const std::string journal = m_out / "second";
  RunningProgram program({"live", m_pass.Path(), "-o", m_out / "part.png", "--journal", journal,
                          "--fps", "1", "--json"});
  ASSERT_TRUE(program.WaitForOutput("\"event\":\"frame\"", 2));
  const Outcome busy = RunProgram({"resume", journal, "-o", m_out / "a.png"});
  EXPECT_EQ(busy.exitCode, 1);
  EXPECT_TRUE(Contains(busy.err, "is in use by another process")) << busy.err;
  program.Signal(SIGINT);
  EXPECT_EQ(program.Wait().exitCode, 3);
  EXPECT_EQ(RunProgram({"verify", journal}).exitCode, 0);
}

// 320 x 240 frames start a mosaic of 640 x 480 x 3 = 921600 bytes, which has to grow.
TEST_F(Journal, AMemoryLimitEndsTheRunWithEverythingSaved) {
  const std::string journal = m_out / "second";
  const Outcome limited = Live({"--max-memory", "1M", "--journal", journal});
  EXPECT_EQ(limited.exitCode, 3) << limited.err;
  EXPECT_TRUE(Contains(limited.err,
                       "Stopped before the picture would take 2 MB, more than the "
                       "1 MB of --max-memory"))
      << limited.err;
  EXPECT_EQ(RunProgram({"verify", journal}).exitCode, 0);
  const Outcome more = RunProgram(
      {"resume", journal, m_pass.Path(), "-o", m_out / "again.png", "--max-memory", "1M"});
  EXPECT_EQ(more.exitCode, 3) << more.err;
  const Outcome on = RunProgram({"resume", journal, m_pass.Path(), "-o", m_out / "again.png"});
  EXPECT_EQ(on.exitCode, 0) << on.err;
  EXPECT_EQ(Live({}).exitCode, 0);
  EXPECT_TRUE(SamePicture(m_out / "live.png", m_out / "again.png"));
  EXPECT_EQ(Live({"--max-memory", "0"}).exitCode, 2);
  EXPECT_EQ(Live({"--max-memory", "much"}).exitCode, 2);
}

}  // namespace
}  // namespace jqstitch_test
