#include "live/live_run.h"

#include "host/input_error.h"
#include "host/source/follow_source.h"
#include "host/source/path_list.h"
#include "run/run_notes.h"

using jqhost::FrameResult;
using jqhost::Picture;

namespace jqstitch {

LiveRun::LiveRun(const LiveOptions& options, Console& console)
    : m_options(options),
      m_console(console),
      m_recorder("live", options.run, console),
      m_preparation(options.preparation),
      m_session(options.settings, WantsThumbnails(options.run)),
      m_files(options, console, m_session, m_preparation) {
  m_recorder.Record().settings = options.settings;
  m_recorder.Record().live = true;
}

std::unique_ptr<jqhost::FrameSource> LiveRun::OpenSource(const std::vector<std::string>& outputs,
                                                         const jqhost::StopToken& stop) const {
  if (m_options.follow > 0) {
    return jqhost::FollowFolder(m_options.source.front(), m_options.follow, outputs, stop,
                                m_options.run.maxPixels);
  }
  std::vector<std::string> paths = m_options.source;
  if (!m_options.list.empty()) {
    const std::vector<std::string> listed = jqhost::ReadPathList(m_options.list);
    CheckNoInputIsOutput(listed, outputs);
    paths.insert(paths.end(), listed.begin(), listed.end());
  }
  return jqhost::OpenFrameSource(paths, outputs, m_options.run.maxPixels);
}

int LiveRun::Run() {
  const std::vector<std::string> outputs = OutputPaths(m_options.run, m_options.preview);
  const InterruptGuard guard(TemporaryPaths(outputs));
  const auto source = jqhost::PrepareFrames(OpenSource(outputs, guard.Token()), m_preparation);
  m_recorder.Record().fromFiles = source->IsFileList();
  const jqhost::LoopEnd end =
      jqhost::RunFrames(*source, m_options.loop, guard.Token(), m_session, *this);
  jqhost::RunRecord& record = m_recorder.Record();
  record.skipped = end.skipped;
  NoteEarlyEnd(*source, end, record);
  if (record.announced > 0) m_recorder.Note(EarlyEndNote(record));
  if (m_session.OutOfMemory()) m_recorder.Note(OutOfMemoryNote());
  if (guard.Token().Requested()) {
    m_recorder.NoteStopped(guard.Reason());
    TellUnreached(*source, std::string("stopped by ") + guard.Reason(), end.taken, *this);
  } else if (m_session.OutOfMemory()) {
    TellUnreached(*source, "out of memory", end.taken, *this);
  }
  if (record.frames.empty()) {
    m_console.EndProgress();
    throw jqhost::InputError(source->Total() > 0 && !source->IsFileList()
                                 ? "the video announces " + std::to_string(source->Total()) +
                                       " frames, but none of them can be decoded"
                                 : std::string("the source gave no frames"));
  }
  m_recorder.NoteSamples(m_preparation);
  const Picture picture = m_session.FinalPicture(m_options.run.picture.trim);
  if (const std::string note = TrimNote(picture, m_options.run.picture.trim); !note.empty()) {
    m_recorder.Note(note);
  }
  m_session.Describe(picture, record);
  if (m_session.HasStarted()) m_files.SavePreview();
  return m_recorder.Deliver(picture, guard.Token());
}

void LiveRun::OnBegin(int total) {
  m_recorder.OnBegin(total);
}

void LiveRun::OnFrame(const FrameResult& result, int done) {
  jqhost::RunRecord& record = m_recorder.Record();
  record.frames.push_back(result);
  if (m_session.HasStarted()) record.workingSize = m_session.Judge().WorkingSize();
  m_track.Add(result);
  m_recorder.OnLiveFrame(result, done, m_track);
  m_files.Refresh(result);
}

}  // namespace jqstitch
