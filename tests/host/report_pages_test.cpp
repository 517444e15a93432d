// What the JSON and HTML reports tell, on a record written by hand in which no two numbers
// that could be mistaken for each other are equal.
#include <gtest/gtest.h>

#include "host/record/html_report.h"
#include "host/record/html_text.h"
#include "host/record/json_report.h"

namespace jqhost_test {
namespace {

using jqhost::Cause;
using jqhost::FrameResult;
using jqhost::RunRecord;
using nlohmann::json;

// A program whose words tell which of them was asked for.
class PlainWords : public jqhost::Words {
 public:
  std::string Outcome(const RunRecord&) const override { return "the outcome"; }
  std::string Reason(const RunRecord&, const FrameResult& frame) const override {
    return frame.Placed() ? "" : "the \"reason\"";
  }
  std::string Advice(const RunRecord&, const FrameResult& frame) const override {
    return frame.cause == Cause::kOverlapTestFailed ? "the advice" : "";
  }
  std::string Note(const FrameResult& frame) const override {
    return frame.Doubtful() ? "the note" : "";
  }
};

FrameResult Frame(int number, Cause cause, cv::Point position) {
  FrameResult frame;
  frame.name = "f" + std::to_string(number) + ".png";
  frame.number = number;
  frame.cause = cause;
  frame.position = position;
  return frame;
}

// Placed, placed with a doubt, tracked, lost.
RunRecord Record() {
  RunRecord record;
  record.program = "some program";
  record.command = "live";
  record.live = true;
  record.settings.overlapMode = 1;
  record.settings.detectLevel = 2;
  record.settings.cornerBudget = 345;
  record.frameSize = cv::Size(200, 120);
  record.workingSize = cv::Size(100, 60);
  record.picture = "m.png";
  record.pictureSize = cv::Size(500, 300);
  record.firstCorner = cv::Point(10, 20);
  record.pixelSize = cv::Size2d(2e-6, 3e-6);
  record.samples = {true, 12, true, 4, false};
  record.announced = 9;
  record.given = 4;

  record.frames = {Frame(1, Cause::kPlaced, {0, 0}), Frame(2, Cause::kPlaced, {40, 6}),
                   Frame(3, Cause::kShiftTooSmall, {}), Frame(4, Cause::kOverlapTestFailed, {}),
                   Frame(5, Cause::kTooFewMatches, {})};
  FrameResult& placed = record.frames[1];
  placed.measured.registered = true;
  placed.measured.matchCount = 12;
  placed.measured.pairCount = 48;
  placed.measured.offset = cv::Point(40, 6);
  placed.shiftShare = 0.4;
  placed.doubt = jqhost::PlacementDoubt{
      0.25, true, jqhost::DoubtReason::kContradicted, 0.5, 0.75, {-31, 17}, {}};
  FrameResult& tracked = record.frames[2];
  tracked.measured.registered = true;
  tracked.measured.matchCount = 30;
  tracked.measured.offset = cv::Point(4, 2);
  FrameResult& lost = record.frames[3];
  lost.measured.brightness = 21;
  lost.measured.brightnessLimit = 22;
  lost.measured.definition = 23;
  lost.measured.definitionLimit = 24;
  lost.measured.motion = 25;
  lost.measured.motionLimit = 26;
  lost.appearance = jqhost::Appearance{0.75, 0.5};

  jqhost::TruthComparison truth;
  truth.errors = {{0, -1.0, 0.0, 0.0}, {1, 1.25, 2.75, 1.0}};
  record.truth = truth;
  return record;
}

TEST(JsonReport, TellsEveryNumberUnderItsOwnName) {
  const json report = jqhost::ReportJson(Record(), PlainWords());
  EXPECT_EQ(report["settings"],
            json({{"overlapMode", 1}, {"detectLevel", 2}, {"cornerBudget", 345}}));
  EXPECT_EQ(report["frameSize"], json({{"width", 200}, {"height", 120}}));
  EXPECT_EQ(report["workingSize"], json({{"width", 100}, {"height", 60}}));
  EXPECT_EQ(report["endedEarly"], json({{"announced", 9}, {"given", 4}}));
  EXPECT_EQ(report["picture"]["firstFrame"], json({{"x", 10}, {"y", 20}}));
  EXPECT_EQ(report["picture"]["pixelSize"], json({{"x", 2e-6}, {"y", 3e-6}}));
  EXPECT_EQ(report["samples"], json({{"stored", 16},
                                     {"bits", 12},
                                     {"found", true},
                                     {"saturatedFrames", 4},
                                     {"grey", false}}));
  EXPECT_EQ(report["losses"],
            json::array({{{"lastHeld", 3}, {"first", 4}, {"last", 5}, {"regained", false}}}));
  EXPECT_EQ(report["tracked"], 1);
  EXPECT_EQ(report["lost"], 2);
  EXPECT_EQ(report["doubtful"], 1);
  // The ways of 100 x 60: 40 of 100, then from there 4 of 100; too few for a median.
  EXPECT_FALSE(report.contains("medianStepPercent"));

  const json& placed = report["list"][1];
  EXPECT_EQ(placed["corner"], json({{"x", 50}, {"y", 26}}));
  EXPECT_EQ(placed["position"], json({{"x", 40}, {"y", 6}}));
  EXPECT_EQ(placed["matches"], 12);
  EXPECT_EQ(placed["matched"], 48);
  EXPECT_EQ(placed["agreeingPercent"], 25.0);
  EXPECT_EQ(placed["shiftPercent"], 40.0);
  EXPECT_EQ(placed["confidence"], 0.25);
  EXPECT_EQ(placed["doubt"], json({{"reason", "contradicted"},
                                   {"correlation", 0.5},
                                   {"rival", 0.75},
                                   {"shift", {{"x", -31}, {"y", 17}}}}));
  EXPECT_EQ(placed["note"], "the note");
  EXPECT_EQ(placed["neighbourError"], 1.25);
  EXPECT_EQ(placed["absoluteError"], 2.75);
  EXPECT_FALSE(report["list"][0].contains("neighbourError"));

  const json& lost = report["list"][3];
  EXPECT_EQ(lost["brightness"], json({{"value", 21.0}, {"limit", 22.0}}));
  EXPECT_EQ(lost["definition"], json({{"value", 23.0}, {"limit", 24.0}}));
  EXPECT_EQ(lost["motion"], json({{"value", 25.0}, {"limit", 26.0}}));
  EXPECT_EQ(lost["besidePicture"], json({{"brightness", 0.75}, {"sharpness", 0.5}}));
  EXPECT_EQ(lost["advice"], "the advice");
  EXPECT_FALSE(lost.contains("position"));
}

TEST(JsonReport, TheMedianStepIsAPercentage) {
  RunRecord record = Record();
  record.frames = {Frame(1, Cause::kPlaced, {0, 0}), Frame(2, Cause::kPlaced, {20, 0}),
                   Frame(3, Cause::kPlaced, {40, 0}), Frame(4, Cause::kPlaced, {60, 0})};
  EXPECT_EQ(jqhost::ReportJson(record, PlainWords())["medianStepPercent"], 20.0);
}

class HtmlReport : public testing::Test {
 protected:
  void ExpectPart(const std::string& part) const {
    EXPECT_NE(m_page.find(part), std::string::npos) << part << "\nin\n" << m_page;
  }

  const std::string m_page =
      jqhost::HtmlReport(Record(), cv::Mat(300, 500, CV_8UC3, cv::Scalar::all(90)), PlainWords());
};

TEST_F(HtmlReport, TheTableHasARowOfEachKind) {
  const std::string n = "<td class=\"n\">";
  ExpectPart("<tr class=\"doubt\">" + n +
             "2</td><td></td><td>f2.png</td><td>placed (the note)</td>" + n + "50</td>" + n +
             "26</td>" + n + "40.0</td>" + n + "12</td>" + n + "25</td>" + n + "0.25</td>" + n +
             "1.25</td>" + n + "2.75</td></tr>\n");
  ExpectPart("<tr class=\"tracked\">" + n + "3</td>");
  ExpectPart("<tr class=\"out\">" + n +
             "4</td><td></td><td>f4.png</td><td>lost: the "
             "&quot;reason&quot;<br><span class=\"advice\">the advice</span></td>");
  ExpectPart("<th class=\"n\">Error to neighbour</th><th class=\"n\">Error to first</th>");
}

// The first frame lies at 10, 20 of the picture and a frame has 100 x 60 there.
TEST_F(HtmlReport, TheMapShowsWhereFramesLieAndWhereTheTrackWasLost) {
  ExpectPart("viewBox=\"0 0 500 300\"");
  ExpectPart("<rect x=\"10\" y=\"20\" width=\"100\" height=\"60\"><title>f1.png</title>");
  ExpectPart("<rect class=\"doubt\" x=\"50\" y=\"26\" width=\"100\" height=\"60\">");
  ExpectPart("<text x=\"60\" y=\"50\">1</text>\n<text x=\"100\" y=\"56\">2</text>");
  ExpectPart("<polyline points=\"60,50 100,56 \"/>");
  // Lost behind frame 3, which was tracked 4, 2 from frame 2.
  ExpectPart("<g id=\"losses\">\n<circle cx=\"104\" cy=\"58\"");
  ExpectPart("<title>track lost at frame 4, not found again; last frame 5</title>");
  // What lies over the picture from the start, and what only when asked for.
  ExpectPart("data-layer=\"frames\" checked>");
  ExpectPart("data-layer=\"seams\">");
  ExpectPart("data-layer=\"losses\" checked>");
}

TEST(HtmlText, WhatHtmlReadsAsItsOwnIsEscaped) {
  EXPECT_EQ(jqhost::Escape("a<b> & \"c\""), "a&lt;b&gt; &amp; &quot;c&quot;");
}

}  // namespace
}  // namespace jqhost_test
