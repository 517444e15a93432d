#include "batch/batch_run.h"

#include <QMetaObject>
#include <QString>
#include <new>
#include <opencv2/imgcodecs.hpp>

#include "batch/file_check.h"
#include "console/interrupt.h"
#include "exit_codes.h"
#include "input/path_list.h"
#include "input/picture_reader.h"
#include "input_error.h"

namespace jqstitch {
namespace {

// Leaves the slot from within a receiver of its signal. The receiver is connected
// directly and no event loop runs, so the exception passes through the signal
// like through a plain call, as the image library's errors do.
struct StopAsked {};

// What the stitcher sets for a batch run.
StitchSettings BatchSettings() {
  StitchSettings settings;
  settings.usePresets = false;
  return settings;
}

std::vector<std::string> CollectFiles(const BatchOptions& options,
                                      const std::vector<std::string>& outputs) {
  std::vector<std::string> paths = options.paths;
  if (!options.list.empty()) {
    const std::vector<std::string> listed = ReadPathList(options.list);
    paths.insert(paths.end(), listed.begin(), listed.end());
  }
  std::vector<std::string> files = ExpandFolders(paths, outputs);
  if (options.natural) SortNaturally(files);
  return files;
}

}  // namespace

BatchRun::BatchRun(const BatchOptions& options, Console& console)
    : m_options(options), m_console(console), m_recorder("batch", options.run, console) {
  m_recorder.Record().settings = BatchSettings();
}

int BatchRun::Run() {
  const InterruptGuard guard;
  const std::vector<std::string> outputs = OutputPaths(m_options.run, std::string());
  m_files = CollectFiles(m_options, outputs);
  CheckNoInputIsOutput(m_files, outputs);
  if (!m_options.natural && m_options.list.empty() && LooksSortedByBytes(m_options.paths)) {
    m_console.Say("The files are taken as given, such as 10 before 2; --natural sorts them");
  }
  m_results.resize(m_files.size());
  m_told.assign(m_files.size(), false);
  for (std::size_t i = 0; i < m_files.size(); ++i) {
    m_results[i].name = m_files[i];
    m_results[i].number = static_cast<int>(i) + 1;
  }
  if (CheckFiles(false) && !m_options.skipBad) return Refuse();
  if (Stitch()) return Deliver();
  // Refused as a whole: now every file is looked at, to name the bad ones.
  if (!CheckFiles(true)) throw InputError("the stitcher refused the files without a cause");
  if (!m_options.skipBad || !Stitch()) return Refuse();
  return Deliver();
}

bool BatchRun::CheckFiles(bool decode) {
  const bool unfit = FindUnfitFiles(m_files, m_results);
  const bool odd = (decode || (unfit && !m_options.skipBad)) && FindOddFiles(m_files, m_results);
  return unfit || odd;
}

// Whether the stitcher took the list.
bool BatchRun::Stitch() {
  m_stitched.clear();
  m_stitcher.m_fileList.clear();
  for (std::size_t i = 0; i < m_files.size(); ++i) {
    if (m_results[i].verdict != Verdict::kNotReached) continue;
    m_stitched.push_back(i);
    m_stitcher.m_fileList.append(QString::fromLocal8Bit(m_files[i].c_str()));
  }
  if (m_stitched.empty()) return false;
  m_refused = false;
  InvokeSlot();
  return !m_refused;
}

void BatchRun::InvokeSlot() {
  const auto status = QObject::connect(&m_stitcher, &JQImageStitching::sglMultiImageProcessStatus,
                                       [this](const QString&) { OnFileDone(); });
  const auto finished = QObject::connect(
      &m_stitcher, &JQImageStitching::sglMultiImageProcessFinished, [this](void* dst) {
        m_refused = dst == nullptr;
        m_trimmed = static_cast<const cv::Mat*>(dst);
      });
  m_recorder.Begin(static_cast<int>(m_stitched.size()));
  m_lastDone = std::chrono::steady_clock::now();
  try {
    QMetaObject::invokeMethod(&m_stitcher, "slotStartStitching", Qt::DirectConnection);
  } catch (const StopAsked&) {
    m_recorder.NoteStopped(StopReason());
  } catch (const cv::Exception& error) {
    OnFailure(error.code == cv::Error::StsNoMem ? std::string("out of memory") : error.err);
  } catch (const std::bad_alloc&) {
    OnFailure("out of memory");
  }
  QObject::disconnect(status);
  QObject::disconnect(finished);
}

void BatchRun::OnFileDone() {
  const std::size_t file = m_stitched[m_done];
  FrameResult& result = m_results[file];
  if (m_done == 0) {
    m_judge.emplace(BatchSettings(), ReadTakenIn(file));
    m_judge->JudgeFirst(result);
  } else {
    m_judge->Judge(
        m_stitcher, [this, file] { return ReadTakenIn(file); }, result);
  }
  ++m_done;
  const auto now = std::chrono::steady_clock::now();
  result.seconds = std::chrono::duration<double>(now - m_lastDone).count();
  m_lastDone = now;
  m_told[file] = true;
  m_recorder.Tell(result, static_cast<int>(m_done));
  if (StopRequested()) throw StopAsked();
}

// The last step of the slot, trimming, fails where the content box has become
// unusable; the mosaic is complete then. Anything earlier ends the run.
void BatchRun::OnFailure(const std::string& what) {
  if (m_done == m_stitched.size()) return;
  ExplainFailure(what, m_results[m_stitched[m_done]]);
  m_recorder.Note("Stopped at " + m_files[m_stitched[m_done]] + ": " + what);
}

int BatchRun::Refuse() {
  m_console.EndProgress();
  for (FrameResult& result : m_results) {
    if (result.verdict == Verdict::kNotReached) {
      ExplainNotReached("the run was refused because of other files", result);
    } else {
      m_console.Complain(result.name + ": " + result.reason);
    }
    m_recorder.Add(result);
  }
  m_recorder.Note(
      "Nothing was stitched; correct the files named, or leave them out with --skip-bad");
  return m_recorder.Deliver(Picture());
}

int BatchRun::Deliver() {
  const std::string why = StopRequested() ? std::string("stopped by ") + StopReason()
                                          : std::string("the run ended before");
  RunRecord& record = m_recorder.Record();
  for (std::size_t i = 0; i < m_results.size(); ++i) {
    FrameResult& result = m_results[i];
    if (result.verdict == Verdict::kNotReached) ExplainNotReached(why, result);
    if (!m_told[i]) m_recorder.Tell(result, static_cast<int>(m_done));
  }
  record.frames = m_results;
  Picture picture;
  if (m_judge) {
    picture = FinalPicture();
    record.frameSize = record.workingSize = m_judge->FrameSize();
    if (!m_stitcher.GetMosaic().empty()) record.firstCorner = m_judge->Origin() - picture.origin;
  }
  return m_recorder.Deliver(picture);
}

Picture BatchRun::FinalPicture() {
  Picture picture = TakePicture(m_stitcher, m_options.run.trim);
  if (picture.image.empty()) {
    picture.image = m_judge->FirstFrame();
    picture.trimmedBy = "placed frames";
  } else if (m_options.run.trim && IsContentBoxExact(m_stitcher)) {
    // Stopped early, the stitcher has not trimmed; the pixels are the same.
    if (m_trimmed != nullptr) picture.image = *m_trimmed;
    picture.trimmedBy = "content box";
  } else if (m_options.run.trim) {
    m_recorder.Note(
        "Trimmed to the placed frames, because the library's own box does not hold all of them");
  }
  return picture;
}

cv::Mat BatchRun::ReadTakenIn(std::size_t file) const {
  std::string why;
  cv::Mat picture = ReadPicture(m_files[file], cv::IMREAD_COLOR, why);
  if (!picture.empty()) JQStitchingAlgorithm().JudgeImageChannel(picture, picture);
  return picture;
}

}  // namespace jqstitch
