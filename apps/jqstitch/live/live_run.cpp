#include "live/live_run.h"

#include "exit_codes.h"
#include "host/input_error.h"
#include "host/source/follow_source.h"
#include "host/source/list_source.h"
#include "host/source/path_list.h"
#include "run/run_notes.h"
#include "words/journal_words.h"

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
  if (options.dropDoubtful) m_session.DropDoubtful();
  m_session.LimitMemory(options.maxMemory);
}

LiveRun::LiveRun(const LiveOptions& options, Console& console, jqhost::RecordedRun& recorded)
    : LiveRun(options, console) {
  m_recorder.Record().command = "resume";
  m_recorded = &recorded;
}

std::unique_ptr<jqhost::FrameSource> LiveRun::OpenSource(const std::vector<std::string>& outputs,
                                                         const jqhost::StopToken& stop) {
  auto source = jqhost::PrepareFrames(OpenFiles(outputs, stop), m_preparation);
  if (m_recorded != nullptr && m_recorded->IsSource(m_options.source)) {
    jqhost::PassRecorded(*source, m_recorded->LastFrame(), m_options.loop.every);
  }
  return source;
}

std::unique_ptr<jqhost::FrameSource> LiveRun::OpenFiles(const std::vector<std::string>& outputs,
                                                        const jqhost::StopToken& stop) const {
  if (m_options.follow > 0) {
    return jqhost::FollowFolder(m_options.source.front(), m_options.follow, outputs, stop,
                                m_options.run.maxPixels);
  }
  if (!m_options.list.empty() && jqhost::IsStreamedList(m_options.list)) {
    return jqhost::OpenListSource(m_options.list, m_options.source, outputs, stop,
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
  if (m_recorded != nullptr && !Rebuild(guard.Token())) {
    throw jqhost::InputError(std::string("stopped by ") + guard.Reason() +
                             " before the recorded run was rebuilt; nothing was written");
  }
  // A source that cannot be opened leaves no journal behind.
  std::unique_ptr<jqhost::FrameSource> source;
  if (HasSource()) source = OpenSource(outputs, guard.Token());
  StartJournal();
  if (source != nullptr) TakeFrames(*source, guard);
  if (m_journal != nullptr && HasSource()) m_journal->NoteEnd();
  return Deliver(guard.Token());
}

// The recorded frames go into the record as they are; nobody is told of them one by one.
bool LiveRun::Rebuild(const jqhost::StopToken& stop) {
  m_console.StartProgress(static_cast<int>(m_recorded->Steps().size()), "recorded frames");
  const auto frames = m_recorded->Rebuild(m_session, WantsThumbnails(m_options.run), stop,
                                          [this](int done) { m_console.Progress(done); });
  m_console.EndProgress();
  if (!frames) return false;
  jqhost::RunRecord& record = m_recorder.Record();
  record.frames = *frames;
  record.workingSize = m_session.Judge().WorkingSize();
  for (const FrameResult& frame : *frames) m_track.Add(frame);
  const jqhost::FrameEntry& last = m_recorded->LastFrame();
  m_preparation.GoOn(last.samples, last.size);
  for (const std::string& note : RecordedNotes(*m_recorded, m_options.journal.folder)) {
    m_recorder.Note(note);
  }
  m_console.Event({{"event", "resumed"},
                   {"folder", m_options.journal.folder},
                   {"frames", frames->size()},
                   {"lastFrame", last.result.name},
                   {"takenOut", m_recorded->TakenOut()},
                   {"torn", m_recorded->Torn()}});
  return true;
}

void LiveRun::StartJournal() {
  if (m_options.journal.folder.empty()) return;
  jqhost::JournalPace pace;
  pace.flushEvery = m_options.journal.flushEvery;
  std::unique_ptr<jqhost::JournalWriter> writer;
  if (m_recorded == nullptr) {
    std::vector<std::string> source = m_options.source;
    if (!m_options.list.empty()) source.push_back(m_options.list);
    writer = std::make_unique<jqhost::JournalWriter>(
        std::make_unique<jqhost::JournalFolder>(
            m_options.journal.folder, jqhost::MakeHeader(m_options.settings, m_options.preparation,
                                                         m_options.loop.every, source)),
        pace);
  } else {
    try {
      writer = m_recorded->Write(pace, HasSource());
    } catch (const jqhost::InputError& error) {
      // The picture can be made from a journal that nobody may write to.
      if (HasSource()) throw;
      return m_recorder.Note(std::string("The journal does not tell of this picture: ") +
                             error.what());
    }
  }
  m_journal = std::make_unique<RunJournal>(std::move(writer), m_console, m_recorder);
  m_session.Record(m_journal->Writer(), [this] { return m_preparation.Summary(); });
}

void LiveRun::TakeFrames(jqhost::FrameSource& source, const InterruptGuard& guard) {
  jqhost::RunRecord& record = m_recorder.Record();
  record.fromFiles = source.IsFileList();
  if (source.GivesHighBytes()) m_recorder.Note(HighBytesNote());
  const jqhost::LoopEnd end =
      jqhost::RunFrames(source, m_options.loop, guard.Token(), m_session, *this);
  record.skipped = end.skipped;
  if (m_recorded == nullptr) NoteEarlyEnd(source, end, record);
  if (record.announced > 0) m_recorder.Note(EarlyEndNote(record));
  if (m_session.OutOfMemory()) {
    const std::int64_t needed = m_session.Stitcher().GetLastVerdict().mosaicBytesNeeded;
    m_recorder.Note(OutOfMemoryNote(needed, m_options.maxMemory));
  }
  if (guard.Token().Requested()) {
    m_recorder.NoteStopped(guard.Reason());
    TellUnreached(source, std::string("stopped by ") + guard.Reason(), end.taken, *this);
  } else if (m_session.OutOfMemory()) {
    TellUnreached(source, "out of memory", end.taken, *this);
  }
  if (record.frames.empty()) {
    m_console.EndProgress();
    throw jqhost::InputError(source.Total() > 0 && !source.IsFileList()
                                 ? "the video announces " + std::to_string(source.Total()) +
                                       " frames, but none of them can be decoded"
                                 : std::string("the source gave no frames"));
  }
}

jqhost::PictureEntry LiveRun::SavedEntry() {
  const jqhost::RunRecord& record = m_recorder.Record();
  jqhost::PictureEntry entry;
  entry.save = MakeSaveOptions(m_options.run.picture, record.samples.grey, record.pixelSize);
  entry.save.path = jqhost::AbsoluteSource({record.picture}).front();
  entry.trim = m_options.run.picture.trim;
  if (m_recorded != nullptr && !HasSource()) entry.without = m_recorded->TakenOut();
  return entry;
}

int LiveRun::Deliver(const jqhost::StopToken& stop) {
  jqhost::RunRecord& record = m_recorder.Record();
  m_recorder.NoteSamples(m_preparation);
  const Picture picture = m_session.FinalPicture(m_options.run.picture.trim);
  if (const std::string note = TrimNote(picture, m_options.run.picture.trim); !note.empty()) {
    m_recorder.Note(note);
  }
  m_session.Describe(picture, record);
  if (m_session.HasStarted()) m_files.SavePreview();
  const int exitCode = m_recorder.Deliver(picture, stop);
  if (m_journal == nullptr) return exitCode;
  return m_journal->Close(SavedEntry()) ? exitCode : kExitWrongInput;
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
  if (m_journal != nullptr) m_journal->Tell();
}

}  // namespace jqstitch
