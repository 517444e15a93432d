#ifndef JQHOST_VERDICT_FRAME_JUDGE_H
#define JQHOST_VERDICT_FRAME_JUDGE_H

#include <functional>
#include <opencv2/core.hpp>

#include "host/run/stitch_settings.h"
#include "host/verdict/doubt/placement_view.h"
#include "host/verdict/frame_result.h"
#include "host/verdict/position_tracker.h"

class JQImageStitching;

namespace jqhost {

/// Turns the stitcher's verdict on each frame into a result and finds out where the
/// frame lies in the run's own coordinates.
class FrameJudge {
 public:
  /// @param firstFrame the frame that started the run, as taken in
  FrameJudge(const StitchSettings& settings, cv::Mat firstFrame);

  /// The result of the frame that started the run.
  void JudgeFirst(FrameResult& result) const;

  /// The result of the newest of the later frames.
  /// @param frame gives the frame as taken in; called only when it was placed
  void Judge(const JQImageStitching& stitcher, const std::function<cv::Mat()>& frame,
             FrameResult& result);

  /// Goes on where a recorded run ended.
  /// @param origin the first frame's corner in its mosaic
  /// @param placedFrame the frame placed last, as taken in, and its position
  void GoOn(const JQImageStitching& stitcher, cv::Point origin, const cv::Mat& placedFrame,
            cv::Point position);

  /// The first frame; its corner in the mosaic; size of a frame at either scale.
  const cv::Mat& FirstFrame() const { return m_firstFrame; }
  cv::Point Origin() const { return m_tracker.Origin(); }
  cv::Size FrameSize() const { return m_firstFrame.size(); }
  cv::Size WorkingSize() const { return m_workingSize; }

 private:
  PlacementDoubt Doubt(const cv::Mat& frame, cv::Point position);

  StitchSettings m_settings;
  cv::Mat m_firstFrame;
  cv::Size m_workingSize;
  PositionTracker m_tracker;
  PlacementView m_placedView;  // of the frame placed last,
  cv::Point m_placedPosition;  // and its position
};

/// Copies the stitcher's verdict: cause, numbers, share of the field of view.
void CopyVerdict(const JQFrameVerdict& verdict, const StitchSettings& settings,
                 FrameResult& result);

}  // namespace jqhost

#endif  // JQHOST_VERDICT_FRAME_JUDGE_H
