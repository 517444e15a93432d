#include "inspect/pair_verdict.h"

#include <cstdio>

#include "host/source/image_record.h"
#include "host/verdict/frame_judge.h"
#include "jqimagestitching.h"
#include "words/frame_words.h"

namespace jqstitch {

namespace {

// How B looks beside A where both show the same, when enough matches tell where.
void CompareWithFirst(const PairAnalysis& pair, jqhost::FrameResult& result) {
  if (result.cause != jqhost::Cause::kOverlapTestFailed ||
      pair.support < JQFrameVerdict::kMatchesNeeded) {
    return;
  }
  const cv::Rect whole(cv::Point(), pair.first.size());
  const cv::Rect common = whole & (whole + pair.offset);
  if (common.empty()) return;
  result.appearance =
      jqhost::CompareAppearance(pair.first(common), pair.second(common - pair.offset));
}

}  // namespace

void DecideVerdict(const cv::Mat& first, const cv::Mat& second,
                   const jqhost::StitchSettings& settings, PairAnalysis& pair) {
  JQImageStitching stitcher;
  for (const cv::Mat& frame : {first, second}) {
    _tagJQIMG record = jqhost::MakeRecord(frame);
    stitcher.Stitching(&record, settings.overlapMode, settings.detectLevel, settings.cornerBudget);
  }
  jqhost::FrameResult result;
  CopyVerdict(stitcher.GetLastVerdict(), settings, result);
  const stitchflags flags = stitcher.GetStitchFlags();
  pair.overlapFit = flags.overlapFlag == 1;
  pair.overlapWords += pair.overlapFit ? "; passed" : "; failed";
  pair.accepted = result.Placed();
  if (!pair.accepted) {
    jqhost::RunRecord record;
    record.live = true;
    record.settings = settings;
    CompareWithFirst(pair, result);
    const std::string advice = AdviceText(record, result);
    pair.verdict = "B would be left out: " + ReasonText(record, result) +
                   (advice.empty() ? "." : ". Advice: " + advice + ".");
    return;
  }
  char percent[32];
  std::snprintf(percent, sizeof percent, "%.1f %%", 100.0 * result.shiftShare);
  pair.verdict = "B would be placed: offset (" + std::to_string(pair.offset.x) + ", " +
                 std::to_string(pair.offset.y) + "), " + percent + " of the frame, " +
                 std::to_string(pair.support) + " of " + std::to_string(pair.matchedFirst.size()) +
                 " matches agree.";
}

}  // namespace jqstitch
