// What the HTML report tells of a set of frames in any order, on an assembly written by hand
// in which no two numbers that could be mistaken for each other are equal.
#include <gtest/gtest.h>

#include "host/record/html_report.h"

namespace jqhost_test {
namespace {

using jqhost::AssembledFrame;
using jqhost::Cause;
using jqhost::FramePair;
using jqhost::FrameResult;
using jqhost::PairState;
using jqhost::RunRecord;

class PlainWords : public jqhost::Words {
 public:
  std::string Outcome(const RunRecord&) const override { return "the outcome"; }
  std::string Reason(const RunRecord&, const FrameResult&) const override { return "the <reason>"; }
  std::string Advice(const RunRecord&, const FrameResult&) const override { return "the <advice>"; }
  std::string Note(const FrameResult&) const override { return ""; }
};

FramePair Pair(std::size_t first, std::size_t second, PairState state, cv::Point shift, int matches,
               int matched) {
  FramePair pair;
  pair.first = first;
  pair.second = second;
  pair.state = state;
  pair.shift = shift;
  pair.matches = matches;
  pair.matched = matched;
  return pair;
}

void AddFrame(RunRecord& record, Cause cause, cv::Point position, int island) {
  FrameResult frame;
  frame.number = static_cast<int>(record.frames.size()) + 1;
  frame.name = "f" + std::to_string(frame.number) + ".png";
  frame.cause = cause;
  frame.position = position;
  record.frames.push_back(frame);
  AssembledFrame assembled;
  assembled.name = frame.name;
  assembled.island = island;
  record.assembly->frames.push_back(assembled);
}

// Frames 1 to 4 in the picture, 5 and 6 an island of their own, 7 held by nothing.
RunRecord Record() {
  RunRecord record;
  record.workingSize = cv::Size(100, 60);
  record.picture = "m.png";
  record.pictureSize = cv::Size(300, 200);
  record.firstCorner = cv::Point(10, 20);
  record.assembly.emplace();
  for (const cv::Point position : {cv::Point(0, 0), {70, 2}, {3, 41}, {72, 44}})
    AddFrame(record, Cause::kPlaced, position, 1);
  AddFrame(record, Cause::kNotConnected, {}, 2);
  AddFrame(record, Cause::kNotConnected, {}, 2);
  AddFrame(record, Cause::kNotConnected, {}, 0);

  jqhost::Assembly& assembly = *record.assembly;
  assembly.frames[1].pairs = 3;
  assembly.frames[1].residual = 0.625;
  assembly.frames[1].confidence = 0.875;
  assembly.pairs = {Pair(0, 1, PairState::kUsed, {71, 2}, 31, 62),
                    Pair(0, 2, PairState::kUsed, {3, 41}, 32, 64),
                    Pair(0, 3, PairState::kThrownOut, {90, 9}, 33, 99),
                    Pair(1, 2, PairState::kRepeats, {-67, 39}, 34, 68),
                    Pair(1, 5, PairState::kThrownOut, {81, 9}, 35, 70),
                    Pair(4, 5, PairState::kUsed, {50, 7}, 36, 72),
                    Pair(6, 2, PairState::kTooFewMatches, {11, 12}, 7, 21)};
  assembly.pairs[0].residual = 0.625;
  assembly.pairs[0].doubt = jqhost::PlacementDoubt{};
  assembly.pairs[0].doubt->confidence = 0.75;
  assembly.islands = {{{0, 1, 2, 3}, {0, 0, 172, 104}}, {{4, 5}, {0, 0, 150, 67}}};
  assembly.loops = {9, 0.75, 2.5};
  return record;
}

class AssemblyPage : public testing::Test {
 protected:
  void SetUp() override { Make(Record()); }
  void Make(const RunRecord& record) {
    m_page =
        jqhost::HtmlReport(record, cv::Mat(200, 300, CV_8UC3, cv::Scalar::all(90)), PlainWords());
  }
  void ExpectPart(const std::string& part) const {
    EXPECT_NE(m_page.find(part), std::string::npos) << part << "\nin\n" << m_page;
  }
  // What one layer of the map holds.
  std::string Layer(const std::string& name) const {
    const std::size_t begin = m_page.find("<g id=\"" + name + "\"");
    if (begin == std::string::npos) return "no layer " + name;
    const std::size_t open = m_page.find(">\n", begin) + 2;
    return m_page.substr(open, m_page.find("</g>", begin) - open);
  }

  std::string m_page;
};

// Frames of 100 x 60 whose first lies at 10, 20 of the picture: the middles are at 60, 50 and,
// as the positions say, 130, 52, 63, 91 and 132, 94.
TEST_F(AssemblyPage, TheGraphLiesOverThePicture) {
  EXPECT_EQ(Layer("used-pairs"),
            "<line x1=\"60\" y1=\"50\" x2=\"130\" y2=\"52\">"
            "<title>1 and 2: used, 31 matches, residual 0.6</title></line>\n"
            "<line x1=\"60\" y1=\"50\" x2=\"63\" y2=\"91\">"
            "<title>1 and 3: used, 32 matches</title></line>\n");
  EXPECT_EQ(Layer("thrown-pairs"),
            "<line x1=\"60\" y1=\"50\" x2=\"132\" y2=\"94\">"
            "<title>1 and 4: thrown out, 33 matches</title></line>\n");
  EXPECT_EQ(Layer("doubted-pairs"),
            "<line x1=\"130\" y1=\"52\" x2=\"63\" y2=\"91\">"
            "<title>2 and 3: repeats, 34 matches</title></line>\n");
  ExpectPart("#thrown-pairs line { stroke: #f33; stroke-width: 2; stroke-dasharray:");
  ExpectPart("data-layer=\"used-pairs\" checked>");
  ExpectPart("data-layer=\"thrown-pairs\" checked>");
  ExpectPart("data-layer=\"doubted-pairs\">");
  // The order of files means nothing here.
  EXPECT_EQ(Layer("order"), "no layer order");
  EXPECT_NE(Layer("numbers").find("<text x=\"132\" y=\"94\">4</text>"), std::string::npos);
}

TEST_F(AssemblyPage, OutcomeLoopsAndIslandsAreTold) {
  ExpectPart(
      "<p>7 pairs compared, 3 used, 2 thrown out because they break loops. 9 loops of "
      "three and four pairs: open by 0.8 pixels in the median, by 2.5 at most.</p>");
  ExpectPart(
      "<p>Island 2, which nothing connects with the picture: 2 frames (5, 6), 150 x 67 "
      "pixels.</p>");
  EXPECT_EQ(m_page.find("Island 1"), std::string::npos);
  EXPECT_EQ(m_page.find("Stopped"), std::string::npos);
}

TEST_F(AssemblyPage, ARowPerFrame) {
  const std::string n = "<td class=\"n\">";
  ExpectPart("<tr>" + n + "2</td><td></td><td>f2.png</td><td>placed</td>" + n + "80</td>" + n +
             "22</td>" + n + "1</td>" + n + "3</td>" + n + "0.62</td>" + n + "0.88</td></tr>\n");
  ExpectPart("<tr class=\"out\">" + n +
             "6</td><td></td><td>f6.png</td><td>left out: the &lt;reason&gt;<br>"
             "<span class=\"advice\">the &lt;advice&gt;</span></td>" +
             n + "</td>" + n + "</td>" + n + "2</td>");
}

TEST_F(AssemblyPage, ARowPerPairWithEnoughMatches) {
  const std::string n = "<td class=\"n\">";
  ExpectPart("<tr>" + n + "1</td>" + n + "2</td><td>used</td>" + n + "71,2</td>" + n + "31</td>" +
             n + "62</td>" + n + "0.75</td>" + n + "0.62</td></tr>\n");
  ExpectPart("<tr class=\"out\">" + n + "1</td>" + n + "4</td><td>thrown out</td>" + n +
             "90,9</td>" + n + "33</td>" + n + "99</td>" + n + "</td>" + n + "</td></tr>\n");
  ExpectPart("<p>1 other pair with too few matches.</p>");
  EXPECT_EQ(m_page.find("11,12"), std::string::npos);
}

TEST_F(AssemblyPage, WithTheTruthEachFrameHasItsError) {
  RunRecord record = Record();
  record.truth.emplace();
  record.truth->errors = {{0, -1.0, 0.0, 0.0}, {1, 1.25, 2.75, 1.0}};
  record.assembly->loops = {};
  record.assembly->stopped = true;
  Make(record);
  ExpectPart("<td class=\"n\">0.88</td><td class=\"n\">2.75</td></tr>\n");
  ExpectPart("<th class=\"n\">Error to first</th></tr>");
  ExpectPart(
      "loops. Stopped before all pairs were compared. No loop of three or four pairs confirms "
      "the positions.</p>");
}

}  // namespace
}  // namespace jqhost_test
