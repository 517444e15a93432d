#include "host/record/json_report.h"

#include <cmath>

#include "host/assemble/assembly_json.h"
#include "host/record/run_track.h"

using nlohmann::json;

namespace jqhost {
namespace {

json SizeJson(cv::Size size) {
  return {{"width", size.width}, {"height", size.height}};
}

json PointJson(cv::Point point) {
  return {{"x", point.x}, {"y", point.y}};
}

json SamplesJson(const SampleSummary& samples) {
  return {{"stored", samples.wide ? 16 : 8},
          {"bits", samples.bits},
          {"found", samples.found},
          {"saturatedFrames", samples.saturatedFrames},
          {"grey", samples.grey}};
}

// The period only where the scene has one; lengths are pixels of the frame.
json DoubtJson(const PlacementDoubt& doubt) {
  json result = {{"reason", DoubtReasonName(doubt.reason)},
                 {"correlation", doubt.agreement},
                 {"rival", doubt.rival}};
  if (doubt.reason == DoubtReason::kContradicted) result["shift"] = PointJson(doubt.rivalShift);
  if (doubt.period != cv::Point2d()) {
    result["period"] = {{"x", doubt.period.x}, {"y", doubt.period.y}};
  }
  return result;
}

}  // namespace

json FrameJson(const RunRecord& record, const FrameResult& frame, const Words& words) {
  json entry = {{"name", frame.name},
                {"number", frame.number},
                {"placed", frame.Placed()},
                {"verdict", CauseName(frame.cause)},
                {"state", StandingName(StandingOf(frame))},
                {"seconds", frame.seconds}};
  if (frame.Placed()) {
    entry["position"] = PointJson(frame.position);
    // The first frame lies where it lies.
    entry["confidence"] = frame.doubt ? frame.doubt->confidence : 1.0;
    entry["doubtful"] = frame.Doubtful();
  }
  if (frame.Doubtful()) entry["doubt"] = DoubtJson(*frame.doubt);
  const auto tell = [&entry](const char* key, const std::string& text) {
    if (!text.empty()) entry[key] = text;
  };
  tell("reason", words.Reason(record, frame));
  tell("advice", words.Advice(record, frame));
  tell("note", words.Note(frame));
  if (frame.measured.registered) {
    entry["matches"] = frame.measured.matchCount;
    entry["matched"] = frame.measured.pairCount;
    entry["agreeingPercent"] = 100.0 * frame.AgreeingShare();
    entry["offset"] = PointJson(frame.measured.offset);
    entry["shiftPercent"] = 100.0 * frame.shiftShare;
  }
  const JQFrameVerdict& measured = frame.measured;
  const auto number = [&entry](const char* key, float value, float limit) {
    if (!std::isnan(value)) entry[key] = {{"value", value}, {"limit", limit}};
  };
  number("brightness", measured.brightness, measured.brightnessLimit);
  number("definition", measured.definition, measured.definitionLimit);
  number("motion", measured.motion, measured.motionLimit);
  if (frame.appearance) {
    entry["besidePicture"] = {{"brightness", frame.appearance->brightness},
                              {"sharpness", frame.appearance->sharpness}};
  }
  return entry;
}

json TruthJson(const TruthComparison& truth) {
  json result = {{"compared", truth.errors.size()}, {"unknown", truth.unknown}};
  if (!truth.errors.empty()) {
    result["neighbour"] = {{"median", truth.neighbourMedian},
                           {"maximum", truth.neighbourMaximum},
                           {"axisMaximum", truth.neighbourAxisMaximum}};
    result["absolute"] = {{"median", truth.absoluteMedian}, {"maximum", truth.absoluteMaximum}};
  }
  return result;
}

json OutcomeJson(const RunRecord& record) {
  json result = {{"outcome", OutcomeName(OutcomeOf(record))},
                 {"frames", record.frames.size()},
                 {"placed", CountPlaced(record)},
                 {"doubtful", CountDoubtful(record)},
                 {"takenBack", CountTakenBack(record)},
                 {"skipped", record.skipped},
                 {"seconds", record.seconds},
                 {"notes", record.notes},
                 {"samples", SamplesJson(record.samples)}};
  for (const Standing standing : {Standing::kTracked, Standing::kLost, Standing::kUnusable}) {
    result[StandingName(standing)] = CountStanding(record, standing);
  }
  if (record.announced > 0) {
    result["endedEarly"] = {{"announced", record.announced}, {"given", record.given}};
  }
  result["stoppedBy"] = record.stoppedBy.empty() ? json() : json(record.stoppedBy);
  result["picture"] = json();
  if (!record.picture.empty()) {
    result["picture"] = {{"path", record.picture},
                         {"size", SizeJson(record.pictureSize)},
                         {"trimmedBy", record.trimmedBy},
                         {"firstFrame", PointJson(record.firstCorner)}};
    if (record.pixelSize) {  // metres
      result["picture"]["pixelSize"] = {{"x", record.pixelSize->width},
                                        {"y", record.pixelSize->height}};
    }
  }
  if (record.truth) result["truth"] = TruthJson(*record.truth);
  if (record.assembly) result["assembly"] = AssemblySummaryJson(*record.assembly);
  return result;
}

json ReportJson(const RunRecord& record, const Words& words) {
  json report = OutcomeJson(record);
  report["program"] = record.program;
  report["command"] = record.command;
  report["settings"] = {{"overlapMode", record.settings.overlapMode},
                        {"detectLevel", record.settings.detectLevel},
                        {"cornerBudget", record.settings.cornerBudget}};
  report["frameSize"] = SizeJson(record.frameSize);
  report["workingSize"] = SizeJson(record.workingSize);
  json frames = json::array();
  for (const FrameResult& frame : record.frames) {
    json entry = FrameJson(record, frame, words);
    if (frame.Placed()) {
      entry["corner"] = PointJson(CornerInPicture(record, frame));
    }
    frames.push_back(std::move(entry));
  }
  if (record.truth) {
    for (const PositionError& error : record.truth->errors) {
      json& entry = frames[error.frame];
      entry["absoluteError"] = error.absolute;
      if (error.neighbour >= 0) entry["neighbourError"] = error.neighbour;
    }
  }
  report["list"] = std::move(frames);
  if (record.assembly) report["assembly"] = AssemblyJson(*record.assembly);
  if (record.live) {
    json losses = json::array();
    for (const Loss& loss : FindLosses(record.frames)) {
      losses.push_back({{"lastHeld", record.frames[loss.held].number},
                        {"first", record.frames[loss.first].number},
                        {"last", record.frames[loss.last].number},
                        {"regained", loss.regained}});
    }
    report["losses"] = std::move(losses);
  }
  if (const std::optional<double> step = MedianStep(record)) {
    report["medianStepPercent"] = 100.0 * *step;
  }
  return report;
}

std::string JsonText(const json& document) {
  return document.dump(2, ' ', false, json::error_handler_t::replace) + "\n";
}

}  // namespace jqhost
