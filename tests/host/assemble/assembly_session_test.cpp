// Whole sets of frames: they come out the same in any order and with any number of threads,
// and nothing is placed on a guess.
#include "host/assemble/assembly_session.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <opencv2/imgcodecs.hpp>
#include <random>

#include "jqstitch/run_program.h"
#include "jqstitch/scene_frames.h"

namespace jqhost_test {
namespace {

using jqhost::AssemblySession;
using jqhost::Cause;
using jqhost::FrameResult;
using Strings = std::vector<std::string>;

const cv::Size kFrame(400, 300);

struct Outcome {
  bool read = false;
  jqhost::Assembly assembly;
  std::vector<FrameResult> results;
  cv::Mat picture;

  // By name, relative to one of them.
  std::map<std::string, cv::Point> PlacesFrom(const std::string& name) const {
    std::map<std::string, cv::Point> places;
    for (const FrameResult& result : results) {
      if (result.Placed()) places[result.name] = result.position;
    }
    const cv::Point origin = places.at(name);
    for (auto& [frame, place] : places) place -= origin;
    return places;
  }
  // Of all used pairs, sorted: the same numbers, to the last bit, where the same was measured.
  std::vector<double> Residuals() const {
    std::vector<double> residuals;
    for (const jqhost::FramePair& pair : assembly.pairs) {
      if (pair.state == jqhost::PairState::kUsed) residuals.push_back(*pair.residual);
    }
    std::sort(residuals.begin(), residuals.end());
    return residuals;
  }
  Cause CauseOf(const std::string& name) const {
    const auto found = std::find_if(results.begin(), results.end(),
                                    [&name](const FrameResult& r) { return r.name == name; });
    return found->cause;
  }
};

Outcome Assemble(const Strings& files, int threads = 2, bool skipBad = false) {
  std::vector<jqhost::PictureId> pictures;
  for (const std::string& file : files) pictures.push_back({file, 0});
  jqhost::FrameSetSettings settings;
  settings.threads = threads;
  const jqhost::StopToken stop;
  AssemblySession session(pictures, settings, {}, stop,
                          [](const std::string&, std::size_t, std::size_t) {});
  jqhost::FramePreparation preparation({});
  Outcome outcome;
  outcome.read = session.Read(preparation, skipBad);
  if (outcome.read) session.Assemble();
  outcome.assembly = session.Result();
  if (!outcome.assembly.islands.empty()) outcome.picture = session.Paint(0, preparation).image;
  session.CloseResults("the end");
  outcome.results = session.Results();
  return outcome;
}

// 3 x 3 frames that overlap by two fifths, row by row.
std::vector<cv::Point> Grid() {
  std::vector<cv::Point> corners;
  for (int i = 0; i < 9; ++i) corners.emplace_back(i % 3 * 240 + i % 2 * 3, i / 3 * 180 + i % 3);
  return corners;
}

class AssemblySessionTest : public testing::Test {
 protected:
  void SetUp() override { m_files = jqstitch_test::WriteFrames(m_folder.Path(), Grid(), kFrame); }

  std::string Write(const std::string& name, const cv::Mat& picture) const {
    const std::string path = m_folder / name;
    EXPECT_TRUE(cv::imwrite(path, picture));
    return path;
  }

  jqstitch_test::TemporaryFolder m_folder;
  Strings m_files;
};

TEST_F(AssemblySessionTest, AGridInAnyOrderComesOutWhereItLies) {
  const Outcome given = Assemble(m_files);
  ASSERT_EQ(given.assembly.islands.size(), 1U);
  const auto places = given.PlacesFrom(m_files[0]);
  ASSERT_EQ(places.size(), m_files.size());
  for (std::size_t i = 0; i < m_files.size(); ++i) {
    const cv::Point off = places.at(m_files[i]) - Grid()[i];
    EXPECT_LE(std::max(std::abs(off.x), std::abs(off.y)), 1) << m_files[i];
  }
  EXPECT_GT(given.assembly.loops.loops, 0U);
  EXPECT_LE(given.assembly.loops.largest, 3.0);

  const unsigned seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  Strings shuffled = m_files;
  for (const int threads : {1, 3}) {
    std::shuffle(shuffled.begin(), shuffled.end(), random);
    const Outcome other = Assemble(shuffled, threads);
    EXPECT_EQ(other.PlacesFrom(m_files[0]), places);
    EXPECT_EQ(other.Residuals(), given.Residuals());
    ASSERT_EQ(other.picture.size(), given.picture.size());
    EXPECT_EQ(cv::norm(other.picture, given.picture, cv::NORM_INF), 0);
    // The first frame of the list is where places are counted from.
    EXPECT_EQ(other.results[0].position, cv::Point());
  }
}

TEST_F(AssemblySessionTest, WhatShowsNothingOfTheSceneIsLeftOut) {
  const cv::Mat scene = jqstitch_test::MakeScene({1600, 1200});
  Strings files = m_files;
  const std::string black = Write("black.png", cv::Mat::zeros(kFrame, CV_8UC3));
  const std::string white = Write("white.png", cv::Mat(kFrame, CV_8UC3, cv::Scalar::all(255)));
  const std::string far = Write("far.png", scene({1100, 850, kFrame.width, kFrame.height}));
  files.insert(files.begin(), {black, far, white});
  files.push_back(m_files[4]);  // the same once more
  const Outcome outcome = Assemble(files);
  for (const std::string& stranger : {black, white, far}) {
    EXPECT_EQ(outcome.CauseOf(stranger), Cause::kNotConnected) << stranger;
  }
  const auto places = outcome.PlacesFrom(m_files[0]);
  EXPECT_EQ(places.size(), 9U);
  EXPECT_EQ(outcome.results.back().position, outcome.results[7].position);
  EXPECT_EQ(outcome.results[3].position, cv::Point()) << "the first one of the island";
  EXPECT_EQ(outcome.assembly.islands.size(), 1U);
}

TEST_F(AssemblySessionTest, TwoGroupsAreTwoIslandsAndTheLargerIsThePicture) {
  const Strings files = {m_files[8], m_files[7], m_files[0], m_files[1], m_files[3]};
  const Outcome outcome = Assemble(files);
  // 8 and 7 are neighbours; 0, 1 and 3 are, and meet 7 and 8 nowhere.
  ASSERT_EQ(outcome.assembly.islands.size(), 2U);
  EXPECT_EQ(outcome.assembly.islands[0].frames, (std::vector<std::size_t>{2, 3, 4}));
  EXPECT_EQ(outcome.assembly.islands[1].frames, (std::vector<std::size_t>{0, 1}));
  EXPECT_EQ(outcome.CauseOf(m_files[8]), Cause::kNotConnected);
  EXPECT_EQ(outcome.assembly.frames[0].island, 2);
  EXPECT_EQ(*outcome.assembly.frames[0].position, cv::Point());
}

TEST_F(AssemblySessionTest, OneFrameIsThePictureAndSoIsTheFirstOfTwoThatDoNotTouch) {
  const Outcome one = Assemble({m_files[2]});
  EXPECT_EQ(cv::norm(one.picture, cv::imread(m_files[2]), cv::NORM_INF), 0);
  const Outcome two = Assemble({m_files[8], m_files[0]});
  EXPECT_EQ(cv::norm(two.picture, cv::imread(m_files[8]), cv::NORM_INF), 0);
  EXPECT_TRUE(two.results[0].Placed());
  EXPECT_EQ(two.results[1].cause, Cause::kNotConnected);
}

TEST_F(AssemblySessionTest, BadFilesRefuseTheRunOrAreLeftOut) {
  Strings files = m_files;
  files[1] = m_folder / "missing.png";
  files[2] = Write("odd.png", cv::Mat(100, 100, CV_8UC3, cv::Scalar::all(9)));
  EXPECT_FALSE(Assemble(files).read);
  const Outcome rest = Assemble(files, 2, true);
  EXPECT_TRUE(rest.read);
  EXPECT_EQ(rest.CauseOf(files[1]), Cause::kUnreadable);
  EXPECT_EQ(rest.CauseOf(files[2]), Cause::kSizeDiffers);
  EXPECT_EQ(rest.PlacesFrom(m_files[0]).size(), 7U);
}

TEST_F(AssemblySessionTest, AStopBetweenThePairsKeepsWhatIsKnown) {
  std::vector<jqhost::PictureId> pictures;
  for (const std::string& file : m_files) pictures.push_back({file, 0});
  jqhost::StopToken stop;
  AssemblySession session(pictures, {}, {}, stop,
                          [&stop](const std::string& what, std::size_t done, std::size_t) {
                            if (what == "pairs" && done == 20) stop.Request();
                          });
  jqhost::FramePreparation preparation({});
  ASSERT_TRUE(session.Read(preparation, false));
  session.Assemble();
  EXPECT_TRUE(session.Result().stopped);
  EXPECT_EQ(session.Result().pairs.size(), 20U);
  EXPECT_FALSE(session.Paint(0, preparation).image.empty());
}

}  // namespace
}  // namespace jqhost_test
