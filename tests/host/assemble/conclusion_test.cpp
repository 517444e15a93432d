// What is told in the end, and what single pairs are worth.
#include "host/assemble/conclusion.h"

#include <gtest/gtest.h>

#include "graph_support.h"
#include "host/assemble/assembly_json.h"
#include "host/assemble/pair_grade.h"

namespace jqhost_test {
namespace {

using jqhost::Assembly;
using jqhost::DoubtReason;
using jqhost::FramePair;
using jqhost::Link;
using jqhost::LinkGrade;
using jqhost::LinkState;
using jqhost::PairState;
using jqhost::PlacementDoubt;

const cv::Size kFrame(100, 80);

FramePair MakePair(std::size_t first, std::size_t second, cv::Point2d shift, int matches = 20) {
  FramePair pair;
  pair.first = first;
  pair.second = second;
  pair.shift = shift;
  pair.fineShift = shift;
  pair.matches = matches;
  pair.matched = 2 * matches;
  pair.doubt = PlacementDoubt();
  return pair;
}

// Frames a, b, c, d of a list in which the graph has them as 1, 3, 0, 2, and one that could
// not be read at the end: b - a and c - b hold, d has a thrown-out pair.
class ConclusionTest : public testing::Test {
 protected:
  void SetUp() override {
    m_assembly.frames.resize(5);
    for (int i = 0; i < 4; ++i) m_assembly.frames[static_cast<std::size_t>(i)].usable = true;
    const std::vector<FramePair> pairs = {MakePair(1, 3, {10.6, 0}), MakePair(0, 3, {-20.2, 5}),
                                          MakePair(2, 3, {1, 1}, 12)};
    std::vector<Link> links;
    for (const FramePair& pair : pairs) {
      links.push_back(Used(pair.first, pair.second, pair.fineShift));
    }
    links[2].state = LinkState::kThrownOut;
    jqhost::Conclude({2, 0, 3, 1}, jqhost::PlaceFrames(4, links), links, pairs, kFrame, m_assembly);
  }

  Assembly m_assembly;
};

TEST_F(ConclusionTest, FramesAreToldInTheNumbersOfTheListFromTheFirstOne) {
  // c lies at 0, b at -20.2, 5, a at -30.8, 5 of the graph: rounded 0, -20, -31, then moved
  // so that a lies at 0.
  EXPECT_EQ(*m_assembly.frames[0].position, cv::Point(0, 0));
  EXPECT_EQ(*m_assembly.frames[1].position, cv::Point(11, 0));
  EXPECT_EQ(*m_assembly.frames[2].position, cv::Point(31, -5));
  EXPECT_NEAR(m_assembly.frames[2].place->x, 30.8, 1e-9);
  EXPECT_FALSE(m_assembly.frames[3].position);
  EXPECT_EQ(m_assembly.frames[3].island, 0);
  EXPECT_EQ(m_assembly.frames[1].pairs, 2);
  EXPECT_NEAR(m_assembly.frames[1].residual, 0, 1e-9);
  ASSERT_EQ(m_assembly.islands.size(), 1U);
  EXPECT_EQ(m_assembly.islands[0].frames, (std::vector<std::size_t>{0, 1, 2}));
  EXPECT_EQ(m_assembly.islands[0].bounds, cv::Rect(0, -5, 131, 85));
}

TEST_F(ConclusionTest, PairsAreToldWithWhatBecameOfThem) {
  ASSERT_EQ(m_assembly.pairs.size(), 3U);  // by first and second frame: 0-1, 2-1, 3-1
  EXPECT_EQ(m_assembly.pairs[0].state, PairState::kUsed);
  EXPECT_EQ(m_assembly.pairs[1].first, 2U);
  EXPECT_EQ(m_assembly.pairs[2].state, PairState::kThrownOut);
  EXPECT_FALSE(m_assembly.pairs[2].residual) << "its frames are in no common island";
  EXPECT_EQ(*m_assembly.frames[3].bestPair, 2U);
  EXPECT_NE(*m_assembly.frames[1].bestPair, 2U) << "used ones come first";
}

TEST_F(ConclusionTest, TheJsonHasTheSame) {
  const nlohmann::json json = jqhost::AssemblyJson(m_assembly);
  EXPECT_EQ(json["compared"], 3);
  EXPECT_EQ(json["used"], 2);
  EXPECT_EQ(json["thrownOut"], 1);
  EXPECT_EQ(json["islands"][0]["frames"], (nlohmann::json{1, 2, 3}));
  EXPECT_EQ(json["frames"].size(), 4U);
  EXPECT_EQ(json["frames"][3]["bestPair"]["state"], "thrown out");
  EXPECT_EQ(json["pairs"][0]["first"], 1);
  EXPECT_EQ(json["pairs"][0]["shift"]["x"], 11);
}

TEST(ConcludeTest, EquallyLargeIslandsComeInTheOrderOfTheList) {
  Assembly assembly;
  assembly.frames.resize(4);
  const std::vector<FramePair> pairs = {MakePair(0, 1, {10, 0}), MakePair(2, 3, {10, 0})};
  const std::vector<Link> links = {Used(0, 1, {10, 0}), Used(2, 3, {10, 0})};
  jqhost::Conclude({3, 1, 2, 0}, jqhost::PlaceFrames(4, links), links, pairs, kFrame, assembly);
  ASSERT_EQ(assembly.islands.size(), 2U);
  EXPECT_EQ(assembly.islands[0].frames, (std::vector<std::size_t>{0, 2}));
}

TEST(ConcludeTest, WhereNothingHoldsTheFirstFrameIsThePicture) {
  Assembly assembly;
  assembly.frames.resize(3);
  jqhost::Conclude({1, 2}, jqhost::PlaceFrames(2, {}), {}, {}, kFrame, assembly);
  ASSERT_EQ(assembly.islands.size(), 1U);
  EXPECT_EQ(assembly.islands[0].frames, std::vector<std::size_t>{1});
}

FramePair Doubted(int matches, cv::Point shift, DoubtReason reason, double agreement = 0.5,
                  double rival = 0.0) {
  FramePair pair = MakePair(0, 1, shift, matches);
  pair.doubt->reason = reason;
  pair.doubt->doubtful = reason != DoubtReason::kNone;
  pair.doubt->agreement = agreement;
  pair.doubt->rival = rival;
  return pair;
}

TEST(PairGradeTest, TheBoundsAreThoseOfALiveRun) {
  const auto grade = [](int matches, cv::Point shift) {
    return jqhost::GradePair(Doubted(matches, shift, DoubtReason::kNone), kFrame);
  };
  EXPECT_EQ(grade(11, {90, 0}), LinkGrade::kSound);
  EXPECT_EQ(grade(11, {0, -72}), LinkGrade::kSound);
  EXPECT_EQ(grade(10, {50, 0}), LinkGrade::kWeak);
  EXPECT_EQ(grade(11, {91, 0}), LinkGrade::kWeak);
  EXPECT_EQ(grade(11, {0, 73}), LinkGrade::kWeak);
  EXPECT_EQ(grade(11, {0, 0}), LinkGrade::kSound) << "the same place twice is no fault here";
}

TEST(PairGradeTest, WhatIsInDoubtIsWeakOrLess) {
  const auto grade = [](const FramePair& pair) { return jqhost::GradePair(pair, kFrame); };
  const cv::Point shift(50, 0);
  EXPECT_EQ(grade(Doubted(30, shift, DoubtReason::kRepeats)), LinkGrade::kDoubtful);
  EXPECT_EQ(grade(Doubted(30, shift, DoubtReason::kContradicted)), LinkGrade::kDoubtful);
  EXPECT_EQ(grade(Doubted(30, shift, DoubtReason::kUnsupported, 0.2, 0.1)), LinkGrade::kWeak);
  EXPECT_EQ(grade(Doubted(30, shift, DoubtReason::kUnsupported, 0.1, 0.2)), LinkGrade::kDoubtful);
  EXPECT_EQ(grade(Doubted(9, shift, DoubtReason::kUnsupported, 0.2, 0.1)), LinkGrade::kDoubtful);
  FramePair unseen = Doubted(5, shift, DoubtReason::kNone);
  unseen.doubt.reset();
  EXPECT_EQ(grade(unseen), LinkGrade::kWorthless);
}

TEST(PairGradeTest, WhyAPairDoesNotCount) {
  const auto why = [](const FramePair& pair) { return jqhost::WhyUnused(pair, kFrame); };
  EXPECT_EQ(why(Doubted(10, {50, 0}, DoubtReason::kNone)), PairState::kTooFewMatches);
  EXPECT_EQ(why(Doubted(30, {95, 0}, DoubtReason::kNone)), PairState::kShiftTooLarge);
  EXPECT_EQ(why(Doubted(10, {50, 0}, DoubtReason::kRepeats)), PairState::kRepeats);
  EXPECT_EQ(why(Doubted(30, {50, 0}, DoubtReason::kContradicted)), PairState::kContradicted);
  EXPECT_EQ(why(Doubted(30, {50, 0}, DoubtReason::kUnsupported)), PairState::kUnsupported);
}

}  // namespace
}  // namespace jqhost_test
