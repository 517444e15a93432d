#include "host/verdict/frame_judge.h"

#include <algorithm>
#include <cstdlib>
#include <opencv2/imgproc.hpp>
#include <utility>
#include <vector>

#include "jqimagestitching.h"

namespace jqhost {
namespace {

cv::Size Working(cv::Size frame, int detectLevel) {
  return cv::Size(frame.width / detectLevel, frame.height / detectLevel);
}

// Whether the stitcher can find corners in a frame (as taken in, full size), found
// out with an engine of our own: the stitcher's record keeps an earlier frame's
// values where a frame has no corners.
bool HasCorners(const cv::Mat& frame, const StitchSettings& settings) {
  const cv::Size working = Working(frame.size(), settings.detectLevel);
  if (frame.empty() || working.area() == 0) return false;
  cv::Mat scaled = frame;
  if (settings.detectLevel != 1) cv::resize(frame, scaled, working, 0, 0, cv::INTER_LINEAR);
  cv::Mat grey;
  cv::cvtColor(scaled, grey, cv::COLOR_RGB2GRAY);  // as the engine does, whatever the order
  JQStitchingAlgorithm engine;
  engine.SetParameter(settings.detectLevel, settings.cornerBudget, settings.overlapMode,
                      settings.usePresets ? 1 : 0);
  std::vector<cv::Point> corners;
  engine.FindHarrisCornerCoordianteFun(grey, corners);
  return !corners.empty();
}

// A batch run keeps the last offset in the record, so that a frame without
// corners can be placed by its predecessor's measurement.
bool MayBeStale(const stitchflags& now, const stitchflags& before) {
  return (now.offsetX != 0 || now.offsetY != 0) && now.offsetX == before.offsetX &&
         now.offsetY == before.offsetY && now.matchCount == before.matchCount;
}

}  // namespace

void FillMeasurements(const stitchflags& flags, cv::Size frame, const StitchSettings& settings,
                      FrameResult& result) {
  result.registered = true;
  result.matches = flags.matchCount;
  result.offset = cv::Point(flags.offsetX, flags.offsetY);
  const int x = std::abs(flags.offsetX), y = std::abs(flags.offsetY);
  const int extent = std::max(1, x > y ? frame.width : frame.height);
  result.shiftShare = static_cast<double>(std::max(x, y)) * settings.detectLevel / extent;
}

Cause WhyMeasuredFrameLeftOut(const stitchflags& flags, const StitchSettings& settings,
                              const FrameResult& result) {
  if (flags.overlapFlag != 1) return Cause::kOverlapTestFailed;
  if (flags.matchCount < kNeededMatches) return Cause::kTooFewMatches;
  // The stitcher compares the shift at the working scale with the full frame.
  const double middle = (kLeastShift + kMostShift) / 2 * settings.detectLevel;
  return result.shiftShare <= middle ? Cause::kShiftTooSmall : Cause::kShiftTooLarge;
}

FrameJudge::FrameJudge(const StitchSettings& settings, cv::Mat firstFrame)
    : m_settings(settings),
      m_firstFrame(std::move(firstFrame)),
      m_workingSize(Working(m_firstFrame.size(), settings.detectLevel)),
      m_tracker(m_workingSize),
      m_placedView(MakePlacementView(m_firstFrame)) {}

void FrameJudge::JudgeFirst(FrameResult& result) const {
  result.cause = Cause::kPlaced;
  result.position = cv::Point(0, 0);
}

void FrameJudge::Judge(const JQImageStitching& stitcher, const std::function<cv::Mat()>& frame,
                       FrameResult& result) {
  const stitchflags flags = stitcher.GetStitchFlags();
  m_tracker.Update(stitcher.GetMosaic().size(), stitcher.GetPlacedBounds());
  if (stitcher.IsLastFrameAccepted()) {
    m_anyPlaced = true;
    FillMeasurements(flags, FrameSize(), m_settings, result);
    result.cause = Cause::kPlaced;
    result.position = stitcher.GetCurrentPosition() - m_tracker.Origin();
    const cv::Mat pixels = frame();
    result.doubt = Doubt(pixels, result.position);
    result.inherited = MayBeStale(flags, m_before) && !HasCorners(pixels, m_settings);
  } else {
    result.cause = WhyLeftOut(flags, frame, result);
  }
  m_before = flags;
}

// The placed frame against the one placed before it, which it takes the place of.
PlacementDoubt FrameJudge::Doubt(const cv::Mat& frame, cv::Point position) {
  PlacementView view = MakePlacementView(frame);
  const cv::Point shift = (position - m_placedPosition) * m_settings.detectLevel;
  const PlacementDoubt doubt = JudgePlacement(m_placedView, view, shift);
  m_placedView = std::move(view);
  m_placedPosition = position;
  return doubt;
}

// Missing corners come first, because nothing is measured without them.
Cause FrameJudge::WhyLeftOut(const stitchflags& flags, const std::function<cv::Mat()>& frame,
                             FrameResult& result) {
  if (!HasCorners(frame(), m_settings)) return Cause::kNoCorners;
  if (!ReferenceHasCorners()) return Cause::kNoReferenceCorners;
  FillMeasurements(flags, FrameSize(), m_settings, result);
  return WhyMeasuredFrameLeftOut(flags, m_settings, result);
}

bool FrameJudge::ReferenceHasCorners() {
  if (m_anyPlaced) return true;
  if (!m_firstHasCorners) m_firstHasCorners = HasCorners(m_firstFrame, m_settings);
  return *m_firstHasCorners;
}

}  // namespace jqhost
