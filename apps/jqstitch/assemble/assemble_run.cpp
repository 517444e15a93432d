#include "assemble/assemble_run.h"

#include <filesystem>

#include "host/assemble/work_pool.h"
#include "host/input_error.h"
#include "host/output/atomic_file.h"
#include "host/output/save_picture.h"
#include "host/run/guarded_call.h"
#include "host/source/path_list.h"
#include "words/assembly_words.h"
#include "words/frame_words.h"

namespace fs = std::filesystem;
using jqhost::AssemblySession;
using jqhost::FrameResult;
using jqhost::Picture;

namespace jqstitch {
namespace {

// "mosaic-2.png" of "mosaic.png", "mosaic-2.ome.tif" of "mosaic.ome.tif".
std::string IslandPath(const std::string& output, std::size_t number) {
  const fs::path path(output);
  std::string name = path.filename().string();
  std::size_t dot = name.rfind('.');
  if (const std::size_t ome = name.rfind(".ome."); ome != std::string::npos) dot = ome;
  if (dot == std::string::npos || dot == 0) dot = name.size();
  name.insert(dot, "-" + std::to_string(number));
  return (path.parent_path() / name).string();
}

}  // namespace

AssembleRun::AssembleRun(const AssembleOptions& options, Console& console)
    : m_options(options),
      m_console(console),
      m_recorder("assemble", options.run, console),
      m_preparation(options.preparation) {
  jqhost::StitchSettings& settings = m_recorder.Record().settings;
  settings = jqhost::BatchSettings();
  settings.detectLevel = options.detectLevel;
  settings.cornerBudget = options.cornerBudget;
}

std::vector<std::string> AssembleRun::CollectFiles(const std::vector<std::string>& outputs) {
  std::vector<std::string> paths = m_options.paths;
  if (!m_options.list.empty()) {
    const std::vector<std::string> listed = jqhost::ReadPathList(m_options.list);
    paths.insert(paths.end(), listed.begin(), listed.end());
  }
  std::vector<std::string> files = jqhost::ExpandFolders(paths, outputs);
  if (m_options.natural) jqhost::SortNaturally(files);
  CheckNoInputIsOutput(files, outputs);
  return files;
}

jqhost::AssemblyHints AssembleRun::MakeHints(const std::vector<jqhost::PictureId>& pictures) const {
  jqhost::AssemblyHints hints;
  hints.grid = m_options.grid;
  if (m_options.overlap) hints.overlap = *m_options.overlap / 100.0;
  if (hints.grid) {
    const std::size_t cells =
        static_cast<std::size_t>(hints.grid->columns) * static_cast<std::size_t>(hints.grid->rows);
    if (cells != pictures.size()) {
      throw jqhost::InputError("--grid has " + std::to_string(cells) + " places for " +
                               std::to_string(pictures.size()) +
                               " pictures; a place that was left out needs a picture, too (an "
                               "empty one will do)");
    }
  }
  if (m_options.positions.empty()) return hints;
  std::vector<std::string> names;
  names.reserve(pictures.size());
  for (const jqhost::PictureId& picture : pictures) names.push_back(jqhost::NameOf(picture));
  // The size of a pixel is in metres, positions then in micrometres.
  const auto& pixel = m_options.run.picture.pixelSize;
  hints.positions = jqhost::ReadPositions(m_options.positions, names, pixel ? 1e-6 / *pixel : 1.0);
  return hints;
}

jqhost::FrameSetSettings AssembleRun::MakeSettings() const {
  jqhost::FrameSetSettings settings;
  settings.detectLevel = m_options.detectLevel;
  settings.cornerBudget = m_options.cornerBudget;
  settings.threads = jqhost::ThreadsFor(m_options.run.threads);
  settings.maxPixels = m_options.run.maxPixels;
  settings.thumbnails = WantsThumbnails(m_options.run);
  return settings;
}

void AssembleRun::ShowProgress(const std::string& what, std::size_t done, std::size_t total) {
  if (what != m_doing || total != m_total) {
    m_doing = what;
    m_total = total;
    m_console.EndProgress();
    m_console.StartProgress(static_cast<int>(total), what);
  }
  m_console.Progress(static_cast<int>(done));
}

int AssembleRun::Run() {
  const std::vector<std::string> outputs = OutputPaths(m_options.run, std::string());
  const InterruptGuard guard(TemporaryPaths(outputs));
  m_files = CollectFiles(outputs);
  const std::vector<jqhost::PictureId> pictures = jqhost::ExpandPages(m_files);
  AssemblySession session(pictures, MakeSettings(), MakeHints(pictures), guard.Token(),
                          [this](const std::string& what, std::size_t done, std::size_t total) {
                            ShowProgress(what, done, total);
                          });
  m_recorder.OnBegin(static_cast<int>(pictures.size()));
  if (!session.Read(m_preparation, m_options.skipBad) && !guard.Token().Requested()) {
    return Refuse(session);
  }
  m_recorder.NoteSamples(m_preparation);
  session.Assemble();
  return Deliver(session, guard);
}

int AssembleRun::Refuse(AssemblySession& session) {
  m_console.EndProgress();
  session.CloseResults("the run was refused because of other files");
  for (const FrameResult& result : session.Results()) {
    if (result.cause == jqhost::Cause::kNotReached) continue;
    m_console.Complain(result.name + ": " + ReasonText(m_recorder.Record(), result));
  }
  m_recorder.Record().frames = session.Results();
  m_recorder.Note(
      "Nothing was assembled; correct the files named, or leave them out with --skip-bad");
  return m_recorder.Deliver(Picture(), jqhost::StopToken());
}

int AssembleRun::Deliver(AssemblySession& session, const InterruptGuard& guard) {
  jqhost::RunRecord& record = m_recorder.Record();
  session.Describe(record);
  const jqhost::Assembly& assembly = session.Result();
  Picture picture;
  const jqhost::CallEnd end = jqhost::CallGuarded([&] {
    if (!assembly.islands.empty()) picture = session.Paint(0, m_preparation);
  });
  if (end.raised) m_recorder.Fail("cannot paint the picture: " + end.what);
  if (guard.Token().Requested()) m_recorder.NoteStopped(guard.Reason());
  session.CloseResults(guard.Token().Requested() ? std::string("stopped by ") + guard.Reason()
                                                 : std::string("the run ended before"));
  record.frames = session.Results();
  for (const std::string& note : AssemblyNotes(assembly, m_options.allIslands)) {
    m_recorder.Note(note);
  }
  if (m_options.allIslands) SaveOtherIslands(session, guard.Token());
  m_console.EndProgress();
  int done = 0;
  for (const FrameResult& result : record.frames) m_recorder.OnFrame(result, ++done);
  return m_recorder.Deliver(picture, guard.Token());
}

void AssembleRun::SaveOtherIslands(AssemblySession& session, const jqhost::StopToken& stop) {
  const jqhost::RunRecord& record = m_recorder.Record();
  const std::size_t count = session.Result().islands.size();
  for (std::size_t i = 1; i < count && !stop.Requested(); ++i) {
    const std::string path = IslandPath(m_options.run.picture.output, i + 1);
    try {
      CheckNoInputIsOutput(m_files, {path});
      jqhost::CheckWritable(path);
      jqhost::SaveOptions options = MakeSaveOptions(
          m_options.run.picture, record.samples.grey,
          PicturePixelSize(m_options.run.picture, record.frameSize, record.workingSize));
      options.path = path;
      const Picture picture = session.Paint(i, m_preparation);
      const jqhost::SavedPicture saved =
          jqhost::SavePictureSomehow(picture.image, options, jqhost::SaveProgress(), stop);
      if (!saved.problem.empty()) m_recorder.Fail(saved.problem);
      if (!saved.path.empty()) {
        m_recorder.Note("Island " + std::to_string(i + 1) + ": " + saved.path);
      }
    } catch (const jqhost::InputError& error) {
      m_recorder.Fail(error.what());
    }
  }
}

}  // namespace jqstitch
