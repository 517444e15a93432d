#ifndef JQSTITCH_BATCH_BATCH_RUN_H
#define JQSTITCH_BATCH_BATCH_RUN_H

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "batch/batch_options.h"
#include "jqimagestitching.h"
#include "run/frame_judge.h"
#include "run/recorder.h"

namespace jqstitch {

/// A batch run: fills the stitcher's list, starts its slot, and follows it
/// through its signals.
class BatchRun {
 public:
  BatchRun(const BatchOptions& options, Console& console);

  /// @return the exit code. Raises `InputError` for what is wrong from the start.
  int Run();

 private:
  bool CheckFiles(bool decode);
  bool Stitch();
  void InvokeSlot();
  void OnFileDone();
  void OnFailure(const std::string& what);
  int Refuse();
  int Deliver();
  Picture FinalPicture();
  cv::Mat ReadTakenIn(std::size_t file) const;

  const BatchOptions& m_options;
  Console& m_console;
  Recorder m_recorder;
  JQImageStitching m_stitcher;
  std::optional<FrameJudge> m_judge;  // from the first file on

  std::vector<std::string> m_files;
  std::vector<FrameResult> m_results;   // one per file
  std::vector<std::size_t> m_stitched;  // the files handed to the stitcher
  std::size_t m_done = 0;               // of these
  bool m_refused = false;
  std::vector<bool> m_told;  // per file: whether the console knows
  std::chrono::steady_clock::time_point m_lastDone;
  const cv::Mat* m_trimmed = nullptr;  // the stitcher's
};

}  // namespace jqstitch

#endif  // JQSTITCH_BATCH_BATCH_RUN_H
