#include "host/verdict/frame_judge.h"

#include <utility>

#include "jqimagestitching.h"

namespace jqhost {
namespace {

Cause CauseOf(JQFrameCause cause) {
  switch (cause) {
    case JQFrameCause::kFirstFrame:
    case JQFrameCause::kPlaced:
      return Cause::kPlaced;
    case JQFrameCause::kNoCornersInFrame:
      return Cause::kNoCorners;
    case JQFrameCause::kNoCornersInReference:
      return Cause::kNoReferenceCorners;
    case JQFrameCause::kOverlapTestFailed:
      return Cause::kOverlapTestFailed;
    case JQFrameCause::kTooFewMatches:
      return Cause::kTooFewMatches;
    case JQFrameCause::kShiftTooSmall:
      return Cause::kShiftTooSmall;
    case JQFrameCause::kShiftTooLarge:
      return Cause::kShiftTooLarge;
    case JQFrameCause::kCallFailed:
      return Cause::kFailed;
    case JQFrameCause::kNone:
      break;
  }
  return Cause::kNotReached;
}

}  // namespace

void CopyVerdict(const JQFrameVerdict& verdict, const StitchSettings& settings,
                 FrameResult& result) {
  result.cause = CauseOf(verdict.cause);
  result.measured = verdict;
  result.shiftShare =
      verdict.registered ? static_cast<double>(verdict.shiftShare) * settings.detectLevel : 0.0;
  // A batch run keeps the last offset in the record, so that a frame without corners
  // can be placed by its predecessor's measurement.
  result.inherited = verdict.cause == JQFrameCause::kPlaced && !verdict.registered;
}

FrameJudge::FrameJudge(const StitchSettings& settings, cv::Mat firstFrame)
    : m_settings(settings),
      m_firstFrame(std::move(firstFrame)),
      m_workingSize(m_firstFrame.cols / settings.detectLevel,
                    m_firstFrame.rows / settings.detectLevel),
      m_tracker(m_workingSize),
      m_trackerBefore(m_tracker),
      m_doubts(ReduceFrame(m_firstFrame)) {}

void FrameJudge::JudgeFirst(FrameResult& result) const {
  result.cause = Cause::kPlaced;
  result.position = cv::Point(0, 0);
}

void FrameJudge::Judge(const JQImageStitching& stitcher, std::function<ReducedFrame()> reduce,
                       FrameResult& result) {
  m_trackerBefore = m_tracker;
  m_tracker.Update(stitcher.GetMosaic().size(), stitcher.GetPlacedBounds());
  CopyVerdict(stitcher.GetLastVerdict(), m_settings, result);
  if (!result.Placed()) return;
  result.position = stitcher.GetCurrentPosition() - m_tracker.Origin();
  const cv::Point shift = (result.position - m_placedPosition) * m_settings.detectLevel;
  m_positionBefore = m_placedPosition;
  m_placedPosition = result.position;
  m_doubts.Begin(std::move(reduce), shift, result.AgreeingShare());
}

void FrameJudge::TakeBack() {
  m_tracker = m_trackerBefore;
  m_placedPosition = m_positionBefore;
  m_doubts.TakeBack();
}

void FrameJudge::GoOn(const JQImageStitching& stitcher, cv::Point origin,
                      const cv::Mat& placedFrame, cv::Point position) {
  m_tracker.GoOn(stitcher.GetMosaic().size(), stitcher.GetPlacedBounds(), origin);
  m_placedPosition = position;
  m_doubts = DoubtChain(ReduceFrame(placedFrame));
}

}  // namespace jqhost
