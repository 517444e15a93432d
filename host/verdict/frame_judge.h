#ifndef JQHOST_VERDICT_FRAME_JUDGE_H
#define JQHOST_VERDICT_FRAME_JUDGE_H

#include <functional>
#include <opencv2/core.hpp>

#include "host/run/stitch_settings.h"
#include "host/verdict/doubt/doubt_chain.h"
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

  /// The result of the newest of the later frames. Where it was placed, the doubt is
  /// begun on another thread: `Settle` waits for it.
  /// @param reduce gives the frame; called on that thread, and only when it was placed
  void Judge(const JQImageStitching& stitcher, std::function<ReducedFrame()> reduce,
             FrameResult& result);
  /// Whether the result of the newest frame still lacks its doubt.
  bool IsUnsettled() const { return m_doubts.InHand(); }
  /// Adds the doubt to that result.
  void Settle(FrameResult& result) { result.doubt = m_doubts.Finish(); }

  /// Forgets the newest frame, which was placed, settled and taken out again.
  void TakeBack();
  /// Goes on where a recorded run ended.
  /// @param origin the first frame's corner in its mosaic
  /// @param placedFrame the frame placed last, and its position
  void GoOn(const JQImageStitching& stitcher, cv::Point origin, const cv::Mat& placedFrame,
            cv::Point position);

  /// The first frame; its corner in the mosaic; size of a frame at either scale.
  const cv::Mat& FirstFrame() const { return m_firstFrame; }
  cv::Point Origin() const { return m_tracker.Origin(); }
  cv::Size FrameSize() const { return m_firstFrame.size(); }
  cv::Size WorkingSize() const { return m_workingSize; }

 private:
  StitchSettings m_settings;
  cv::Mat m_firstFrame;
  cv::Size m_workingSize;
  PositionTracker m_tracker;
  cv::Point m_placedPosition;       // of the frame placed last
  PositionTracker m_trackerBefore;  // both as they were before the newest frame
  cv::Point m_positionBefore;
  DoubtChain m_doubts;
};

/// Copies the stitcher's verdict: cause, numbers, share of the field of view.
void CopyVerdict(const JQFrameVerdict& verdict, const StitchSettings& settings,
                 FrameResult& result);

}  // namespace jqhost

#endif  // JQHOST_VERDICT_FRAME_JUDGE_H
