#include "inspect/pair_verdict.h"

#include <cstdio>

#include "host/source/image_record.h"
#include "host/verdict/frame_judge.h"
#include "jqimagestitching.h"
#include "words/frame_words.h"

namespace jqstitch {

void DecideVerdict(const cv::Mat& first, const cv::Mat& second,
                   const jqhost::StitchSettings& settings, PairAnalysis& pair) {
  JQImageStitching stitcher;
  for (const cv::Mat& frame : {first, second}) {
    _tagJQIMG record = jqhost::MakeRecord(frame);
    stitcher.Stitching(&record, settings.overlapMode, settings.detectLevel, settings.cornerBudget);
  }
  stitchflags flags = stitcher.GetStitchFlags();
  pair.overlapFit = flags.overlapFlag == 1;
  pair.overlapWords += pair.overlapFit ? "; passed" : "; failed";
  pair.accepted = stitcher.IsLastFrameAccepted();

  jqhost::FrameResult result;
  if (!pair.accepted) {
    if (pair.cornersSecond.empty()) {
      result.cause = jqhost::Cause::kNoCorners;
    } else if (pair.cornersFirst.empty()) {
      result.cause = jqhost::Cause::kNoReferenceCorners;
    } else {
      FillMeasurements(flags, second.size(), settings, result);
      result.cause = WhyMeasuredFrameLeftOut(flags, settings, result);
    }
    pair.verdict = "B would be left out: " + ReasonText(settings, result) +
                   ". Advice: " + AdviceText(settings, result) + ".";
    return;
  }
  // The stitcher zeroes the offset once it has placed the frame.
  flags.offsetX = pair.offset.x;
  flags.offsetY = pair.offset.y;
  FillMeasurements(flags, second.size(), settings, result);
  char percent[32];
  std::snprintf(percent, sizeof percent, "%.1f %%", 100.0 * result.shiftShare);
  pair.verdict = "B would be placed: offset (" + std::to_string(pair.offset.x) + ", " +
                 std::to_string(pair.offset.y) + "), " + percent + " of the frame, " +
                 std::to_string(pair.support) + " of " + std::to_string(pair.matchedFirst.size()) +
                 " matches agree.";
}

}  // namespace jqstitch
