#include "inspect/pair_verdict.h"

#include <cstdio>

#include "input/image_record.h"
#include "jqimagestitching.h"
#include "run/verdict.h"

namespace jqstitch {

void DecideVerdict(const cv::Mat& first, const cv::Mat& second, const PairSettings& settings,
                   PairAnalysis& pair) {
  JQImageStitching stitcher;
  for (const cv::Mat& frame : {first, second}) {
    _tagJQIMG record = MakeRecord(frame);
    stitcher.Stitching(&record, settings.overlapMode, settings.detectLevel, settings.cornerBudget);
  }
  stitchflags flags = stitcher.GetStitchFlags();
  pair.overlapFit = flags.overlapFlag == 1;
  pair.overlapWords += pair.overlapFit ? "; passed" : "; failed";
  pair.accepted = stitcher.IsLastFrameAccepted();

  StitchSettings run;
  run.overlapMode = settings.overlapMode;
  run.detectLevel = settings.detectLevel;
  run.cornerBudget = settings.cornerBudget;
  FrameResult result;
  if (!pair.accepted) {
    ExplainLeftOut(
        flags, second.size(), run, [&] { return !pair.cornersSecond.empty(); },
        [&] { return !pair.cornersFirst.empty(); }, result);
    pair.verdict = "B would be left out: " + result.reason + ". Advice: " + result.advice + ".";
    return;
  }
  // The stitcher zeroes the offset once it has placed the frame.
  flags.offsetX = pair.offset.x;
  flags.offsetY = pair.offset.y;
  FillMeasurements(flags, second.size(), run, result);
  char percent[32];
  std::snprintf(percent, sizeof percent, "%.1f %%", result.shiftPercent);
  pair.verdict = "B would be placed: offset (" + std::to_string(pair.offset.x) + ", " +
                 std::to_string(pair.offset.y) + "), " + percent + " of the frame, " +
                 std::to_string(pair.support) + " of " + std::to_string(pair.matchedFirst.size()) +
                 " matches agree.";
}

}  // namespace jqstitch
