#ifndef JQHOST_RUN_BATCH_SESSION_H
#define JQHOST_RUN_BATCH_SESSION_H

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/output/picture.h"
#include "host/record/run_record.h"
#include "host/run/batch_files.h"
#include "host/run/run_observer.h"
#include "host/run/stop_token.h"
#include "host/system/pinned_file.h"
#include "host/verdict/frame_judge.h"
#include "jqimagestitching.h"

namespace jqhost {

/// A batch run over picture files of one size: fills the stitcher's list, starts
/// its slot, and follows it through its signals. The observer hears of a placed file while
/// the next one is stitched, when the doubt about it is known.
class BatchSession {
 public:
  /// @param stop, observer must outlive the session
  /// @param maxPixels larger pictures are refused by their header
  BatchSession(const std::vector<BatchFile>& files, std::int64_t maxPixels, const StopToken& stop,
               RunObserver& observer);

  /// Stitches the files. Unusable ones are left out with `skipBad`; else any of them
  /// refuses the whole run, and `Results` says which. A file that becomes unusable
  /// only while the run goes on ends it there, or with `skipBad` starts it again
  /// without that file.
  /// @return whether anything was stitched
  bool Run(bool skipBad);

  /// One per file, in their order.
  const std::vector<FrameResult>& Results() const { return m_results; }
  /// Gives the files that were never reached their cause, and tells the observer
  /// about all that it has not heard of.
  void CloseResults(const std::string& whyNotReached);

  /// Whether a stop was asked for and ended the run early.
  bool Stopped() const { return m_stopped; }
  /// The file at which the library gave up; none in a run that came to its end.
  const FrameResult* FailedFile() const;

  /// The picture; empty when no file was stitched.
  Picture FinalPicture(bool trim) const;
  void Describe(const Picture& picture, RunRecord& record) const;

 private:
  enum class SlotEnd { kDone, kRefused, kFileChanged, kNothingToDo };

  int CountBadFiles(bool decode);
  SlotEnd Stitch();
  void PrepareSlot();
  void InvokeSlot();
  void OnFileDone();
  bool OnFirstFile(FrameResult& result);
  void TellUnsettled();
  void Tell(std::size_t file, std::size_t done);
  cv::Mat ReadTakenIn(std::size_t file) const;
  ReducedFrame Reduced(std::size_t file) const;
  void ExplainFailure(std::size_t file, const std::string& what);

  std::vector<PinnedFile> m_files;
  std::vector<ReducedFrame> m_reduced;  // per file; empty where it is read again
  const std::int64_t m_maxPixels;
  const StopToken& m_stop;
  RunObserver& m_observer;
  std::unique_ptr<JQImageStitching> m_stitcher;  // a new one for every try
  std::optional<FrameJudge> m_judge;             // from the first file on

  std::vector<FrameResult> m_results;
  std::vector<bool> m_told;                // per file: whether the observer knows
  std::optional<std::size_t> m_unsettled;  // the file whose doubt is not yet known
  std::vector<std::size_t> m_stitched;     // the files handed to the stitcher
  std::size_t m_done = 0;                  // of these
  bool m_refused = false;
  bool m_stopped = false;
  std::optional<std::size_t> m_failed;
  std::chrono::steady_clock::time_point m_lastDone;
  const cv::Mat* m_trimmed = nullptr;  // the stitcher's
};

}  // namespace jqhost

#endif  // JQHOST_RUN_BATCH_SESSION_H
