#ifndef JQSTITCH_LIVE_LIVE_RUN_H
#define JQSTITCH_LIVE_LIVE_RUN_H

#include <chrono>
#include <optional>

#include "input/frame_source.h"
#include "jqimagestitching.h"
#include "live/live_options.h"
#include "run/frame_judge.h"
#include "run/recorder.h"

namespace jqstitch {

/// A live run: hands the stitcher one frame after another, as a camera would.
class LiveRun {
 public:
  LiveRun(const LiveOptions& options, Console& console);

  /// @return the exit code. Raises `InputError` for what is wrong from the start.
  int Run();

 private:
  using Clock = std::chrono::steady_clock;

  void TakeFrames(FrameSource& source);
  void Take(SourceFrame& frame);
  void Stitch(const cv::Mat& image, FrameResult& result);
  void AddUnreached(FrameSource& source);
  void RefreshFiles();
  void SaveQuietly(const std::string& path, int longest, bool isPreview);
  Picture FinalPicture();

  const LiveOptions& m_options;
  Console& m_console;
  Recorder m_recorder;
  JQImageStitching m_stitcher;
  std::optional<FrameJudge> m_judge;  // from the first usable frame on
  bool m_outOfMemory = false;
  bool m_unsaved = false, m_unshown = false;  // the picture has changed since
  Clock::time_point m_lastSave, m_lastPreview;
};

}  // namespace jqstitch

#endif  // JQSTITCH_LIVE_LIVE_RUN_H
