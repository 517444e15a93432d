#ifndef JQSTITCH_RUN_RECORDER_H
#define JQSTITCH_RUN_RECORDER_H

#include <chrono>
#include <string>

#include "console/console.h"
#include "output/picture.h"
#include "run/run_options.h"
#include "run/run_record.h"

namespace jqstitch {

/// Keeps the record of a run while it goes on, tells the console, and delivers
/// picture, reports and summary at its end.
class Recorder {
 public:
  Recorder(const std::string& command, const RunOptions& options, Console& console);

  RunRecord& Record() { return m_record; }

  /// Says that the run begins; again for another try with fewer frames.
  /// @param total frames; 0 when nobody knows
  void Begin(int total);
  /// One more frame is done: keeps and tells it.
  void Add(const FrameResult& result);
  /// Only tells it. @param done frames so far
  void Tell(const FrameResult& result, int done);
  /// A sentence for the summary.
  void Note(const std::string& text) { m_record.notes.push_back(text); }
  /// The run was asked to stop by a signal.
  void NoteStopped(const std::string& by);

  /// Ends the run: saves the picture, if there is one, compares with the truth,
  /// writes the reports, prints the summary. What cannot be written is told, and
  /// the rest is still delivered.
  /// @return the exit code
  int Deliver(const Picture& picture);

 private:
  bool Save(const Picture& picture, cv::Mat& image);
  bool WriteReports(const cv::Mat& image);
  void Fail(const std::string& what);

  const RunOptions& m_options;
  Console& m_console;
  RunRecord m_record;
  std::optional<Truth> m_truth;
  bool m_begun = false;
  std::chrono::steady_clock::time_point m_start;
};

}  // namespace jqstitch

#endif  // JQSTITCH_RUN_RECORDER_H
