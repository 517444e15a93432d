#include "batch/batch_run.h"

#include "host/source/path_list.h"
#include "run/run_notes.h"
#include "words/frame_words.h"

using jqhost::BatchSession;
using jqhost::FrameResult;
using jqhost::Picture;

namespace jqstitch {

BatchRun::BatchRun(const BatchOptions& options, Console& console)
    : m_options(options),
      m_console(console),
      m_recorder("batch", options.run, console),
      m_preparation(options.preparation) {
  m_recorder.Record().settings = jqhost::BatchSettings();
}

std::vector<std::string> BatchRun::CollectFiles(const std::vector<std::string>& outputs) {
  std::vector<std::string> paths = m_options.paths;
  if (!m_options.list.empty()) {
    const std::vector<std::string> listed = jqhost::ReadPathList(m_options.list);
    paths.insert(paths.end(), listed.begin(), listed.end());
  }
  std::vector<std::string> files = jqhost::ExpandFolders(paths, outputs);
  if (m_options.natural) jqhost::SortNaturally(files);
  CheckNoInputIsOutput(files, outputs);
  if (!m_options.natural && m_options.list.empty() && jqhost::LooksSortedByBytes(m_options.paths)) {
    m_console.Say("The files are taken as given, such as 10 before 2; --natural sorts them");
  }
  return files;
}

int BatchRun::Run() {
  const std::vector<std::string> outputs = OutputPaths(m_options.run, std::string());
  const InterruptGuard guard(TemporaryPaths(outputs));
  const std::int64_t maxPixels = m_options.run.maxPixels;
  const jqhost::BatchFiles files(jqhost::ExpandPages(CollectFiles(outputs)), m_preparation,
                                 maxPixels, guard.Token(), WantsThumbnails(m_options.run));
  m_recorder.NoteSamples(m_preparation);
  BatchSession session(files.Files(), maxPixels, guard.Token(), m_recorder);
  if (guard.Token().Requested()) return StopBefore(session, guard);
  return session.Run(m_options.skipBad) ? Deliver(session, guard) : Refuse(session);
}

// Stopped while the files were prepared: there is no picture.
int BatchRun::StopBefore(BatchSession& session, const InterruptGuard& guard) {
  session.CloseResults(std::string("stopped by ") + guard.Reason());
  m_recorder.Record().frames = session.Results();
  m_recorder.Record().stoppedBy = guard.Reason();
  m_recorder.Note(std::string("Stopped by ") + guard.Reason() + " before anything was stitched");
  return m_recorder.Deliver(Picture(), jqhost::StopToken());
}

int BatchRun::Refuse(BatchSession& session) {
  m_console.EndProgress();
  session.CloseResults("the run was refused because of other files");
  for (const FrameResult& result : session.Results()) {
    if (result.cause == jqhost::Cause::kNotReached) continue;
    m_console.Complain(result.name + ": " + ReasonText(m_recorder.Record(), result));
  }
  m_recorder.Record().frames = session.Results();
  m_recorder.Note(
      "Nothing was stitched; correct the files named, or leave them out with --skip-bad");
  return m_recorder.Deliver(Picture(), jqhost::StopToken());
}

int BatchRun::Deliver(BatchSession& session, const InterruptGuard& guard) {
  if (session.Stopped()) m_recorder.NoteStopped(guard.Reason());
  if (const FrameResult* failed = session.FailedFile()) {
    m_recorder.Note("Stopped at " + failed->name + ": " + failed->detail);
  }
  session.CloseResults(session.Stopped() ? std::string("stopped by ") + guard.Reason()
                                         : std::string("the run ended before"));
  jqhost::RunRecord& record = m_recorder.Record();
  record.frames = session.Results();
  const Picture picture = session.FinalPicture(m_options.run.picture.trim);
  if (const std::string note = TrimNote(picture, m_options.run.picture.trim); !note.empty()) {
    m_recorder.Note(note);
  }
  session.Describe(picture, record);
  return m_recorder.Deliver(picture, guard.Token());
}

}  // namespace jqstitch
