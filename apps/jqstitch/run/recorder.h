#ifndef JQSTITCH_RUN_RECORDER_H
#define JQSTITCH_RUN_RECORDER_H

#include <chrono>
#include <string>
#include <vector>

#include "console/console.h"
#include "host/output/picture.h"
#include "host/output/save_options.h"
#include "host/record/run_record.h"
#include "host/run/run_observer.h"
#include "host/run/stop_token.h"
#include "host/source/frame_preparation.h"
#include "run/run_options.h"
#include "words/run_words.h"

namespace jqstitch {

/// Keeps the record of a run while it goes on, tells the console, and delivers
/// picture, reports and summary at its end.
class Recorder : public jqhost::RunObserver {
 public:
  Recorder(const std::string& command, const RunOptions& options, Console& console);

  jqhost::RunRecord& Record() { return m_record; }

  void OnBegin(int total) override;
  /// Tells the console about a frame; keeping it is up to the run.
  void OnFrame(const jqhost::FrameResult& result, int done) override;
  /// The same of a live run, with how it stands at the moment.
  void OnLiveFrame(const jqhost::FrameResult& result, int done, const jqhost::Track& track);
  /// A sentence for the summary.
  void Note(const std::string& text) { m_record.notes.push_back(text); }
  /// Something that was to be written could not be: told last, and the exit code is 1.
  void Fail(const std::string& what) { m_failures.push_back(what); }
  /// What the frames' samples were like.
  void NoteSamples(const jqhost::FramePreparation& preparation);
  /// The run was asked to stop by a signal.
  void NoteStopped(const std::string& by);

  /// Ends the run: saves the picture, if there is one, compares with the truth,
  /// writes the reports, prints the summary. What cannot be written is told, and
  /// the rest is still delivered.
  /// @param stop ends the saving of the picture, unless it was requested before: then it
  ///        ended the run, whose picture is to be saved
  /// @return the exit code
  int Deliver(const jqhost::Picture& picture, const jqhost::StopToken& stop);

 private:
  nlohmann::json FrameEvent(const jqhost::FrameResult& result) const;
  bool MaySave() const;
  bool Save(const jqhost::Picture& picture, const jqhost::StopToken& stop);
  bool SavePicture(const jqhost::Picture& picture, const jqhost::StopToken& stop);
  bool SaveCoverage(const jqhost::StopToken& stop);
  jqhost::SaveProgress ShowProgress(cv::Size size, const std::string& path);
  void WriteReports(const cv::Mat& image);
  void CompareWithTruth();

  const RunOptions& m_options;
  Console& m_console;
  jqhost::RunRecord m_record;
  std::optional<jqhost::Truth> m_truth;
  RunWords m_words;
  // Told last, so that the summary's good news is not the last word.
  std::vector<std::string> m_failures;
  bool m_begun = false;
  std::chrono::steady_clock::time_point m_start;
};

}  // namespace jqstitch

#endif  // JQSTITCH_RUN_RECORDER_H
