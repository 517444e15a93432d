#include "run/frame_judge.h"

#include <utility>

#include "jqimagestitching.h"

namespace jqstitch {
namespace {

cv::Size Working(cv::Size frame, int detectLevel) {
  return cv::Size(frame.width / detectLevel, frame.height / detectLevel);
}

// A batch run keeps the last offset in the record, so that a frame without
// corners can be placed by its predecessor's measurement.
bool MayBeStale(const stitchflags& now, const stitchflags& before) {
  return (now.offsetX != 0 || now.offsetY != 0) && now.offsetX == before.offsetX &&
         now.offsetY == before.offsetY && now.matchCount == before.matchCount;
}

}  // namespace

FrameJudge::FrameJudge(const StitchSettings& settings, cv::Mat firstFrame)
    : m_settings(settings),
      m_firstFrame(std::move(firstFrame)),
      m_workingSize(Working(m_firstFrame.size(), settings.detectLevel)),
      m_tracker(m_workingSize) {}

void FrameJudge::JudgeFirst(FrameResult& result) const {
  result.verdict = Verdict::kPlaced;
  result.position = cv::Point(0, 0);
}

void FrameJudge::Judge(const JQImageStitching& stitcher, const std::function<cv::Mat()>& frame,
                       FrameResult& result) {
  const stitchflags flags = stitcher.GetStitchFlags();
  m_tracker.Update(stitcher.GetMosaic().size(), stitcher.GetPlacedBounds());
  if (stitcher.IsLastFrameAccepted()) {
    m_anyPlaced = true;
    FillMeasurements(flags, FrameSize(), m_settings, result);
    result.verdict = Verdict::kPlaced;
    result.position = stitcher.GetCurrentPosition() - m_tracker.Origin();
    if (MayBeStale(flags, m_before) && !HasCorners(frame(), m_settings)) {
      result.note = "it shows no corners and was placed by the frame before it; check it";
    }
  } else {
    ExplainLeftOut(
        flags, FrameSize(), m_settings, [&] { return HasCorners(frame(), m_settings); },
        [&] {
          if (m_anyPlaced) return true;
          if (!m_firstHasCorners) m_firstHasCorners = HasCorners(m_firstFrame, m_settings);
          return *m_firstHasCorners;
        },
        result);
  }
  m_before = flags;
}

}  // namespace jqstitch
