#ifndef JQSTITCH_RUN_FRAME_JUDGE_H
#define JQSTITCH_RUN_FRAME_JUDGE_H

#include <functional>
#include <opencv2/core.hpp>
#include <optional>

#include "run/frame_result.h"
#include "run/position_tracker.h"
#include "run/verdict.h"

class JQImageStitching;

namespace jqstitch {

/// Asks the stitcher what became of each frame and puts it into words.
class FrameJudge {
 public:
  /// @param firstFrame the frame that started the run, as taken in
  FrameJudge(const StitchSettings& settings, cv::Mat firstFrame);

  /// The verdict on the frame that started the run.
  void JudgeFirst(FrameResult& result) const;

  /// The verdict on the newest of the later frames.
  /// @param frame gives the frame as taken in; called only when it was left out
  void Judge(const JQImageStitching& stitcher, const std::function<cv::Mat()>& frame,
             FrameResult& result);

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
  stitchflags m_before;
  bool m_anyPlaced = false;
  std::optional<bool> m_firstHasCorners;
};

}  // namespace jqstitch

#endif  // JQSTITCH_RUN_FRAME_JUDGE_H
