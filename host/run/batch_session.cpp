#include "host/run/batch_session.h"

#include <QMetaObject>
#include <QString>
#include <opencv2/imgcodecs.hpp>

#include "host/input_error.h"
#include "host/run/guarded_call.h"
#include "host/run/run_picture.h"
#include "host/source/file_check.h"
#include "host/source/picture_reader.h"

namespace jqhost {

BatchSession::BatchSession(const std::vector<BatchFile>& files, std::int64_t maxPixels,
                           const StopToken& stop, RunObserver& observer)
    : m_maxPixels(maxPixels),
      m_stop(stop),
      m_observer(observer),
      m_results(files.size()),
      m_told(files.size(), false) {
  m_files.reserve(files.size());
  for (std::size_t i = 0; i < files.size(); ++i) {
    // The stitcher reads the files by itself, long after they were looked at.
    m_files.emplace_back(files[i].path);
    m_results[i].name = files[i].name;
    m_results[i].number = static_cast<int>(i) + 1;
    m_results[i].thumbnail = files[i].thumbnail;
    m_reduced.push_back(files[i].reduced);
    if (!files[i].why.empty()) SetUnreadable(files[i].why, m_results[i]);
  }
}

bool BatchSession::Run(bool skipBad) {
  int bad = CountBadFiles(false);
  if (bad > 0 && !skipBad) {
    CountBadFiles(true);
    return false;
  }
  for (;;) {
    const SlotEnd end = Stitch();
    if (end == SlotEnd::kDone) return true;
    if (end == SlotEnd::kNothingToDo) return false;
    if (end == SlotEnd::kFileChanged) {
      if (!skipBad) return m_judge.has_value();
      continue;
    }
    // Refused as a whole: now every file is looked at, to name the bad ones.
    const int known = bad;
    bad = CountBadFiles(true);
    if (bad == known) throw InputError("the stitcher refused the files without a cause");
    if (!skipBad) return false;
  }
}

int BatchSession::CountBadFiles(bool decode) {
  const int unfit = FindUnfitFiles(m_files, m_maxPixels, m_results);
  return decode ? FindOddFiles(m_files, m_maxPixels, m_results) : unfit;
}

// Files that an earlier try has stitched are tried again.
void BatchSession::PrepareSlot() {
  m_stitcher = std::make_unique<JQImageStitching>();
  m_stitched.clear();
  m_done = 0;
  m_failed.reset();
  m_unsettled.reset();
  m_judge.reset();
  m_trimmed = nullptr;
  m_refused = false;
  for (std::size_t i = 0; i < m_files.size(); ++i) {
    const bool wasTried = m_told[i];
    if (wasTried) {
      FrameResult fresh;
      fresh.name = m_results[i].name;
      fresh.number = m_results[i].number;
      fresh.thumbnail = m_results[i].thumbnail;
      m_results[i] = fresh;
      m_told[i] = false;
    }
    if (m_results[i].cause != Cause::kNotReached) continue;
    m_stitched.push_back(i);
    m_stitcher->m_fileList.append(QString::fromLocal8Bit(m_files[i].Path().c_str()));
  }
}

BatchSession::SlotEnd BatchSession::Stitch() {
  PrepareSlot();
  if (m_stitched.empty()) return SlotEnd::kNothingToDo;
  InvokeSlot();
  if (m_refused) return SlotEnd::kRefused;
  const bool fileChanged = m_failed && m_results[*m_failed].cause != Cause::kFailed;
  return fileChanged ? SlotEnd::kFileChanged : SlotEnd::kDone;
}

void BatchSession::InvokeSlot() {
  QObject::connect(m_stitcher.get(), &JQImageStitching::sglMultiImageProcessStatus,
                   [this](const QString&) { OnFileDone(); });
  QObject::connect(m_stitcher.get(), &JQImageStitching::sglMultiImageProcessFinished,
                   [this](void* dst) {
                     m_refused = dst == nullptr;
                     m_trimmed = static_cast<const cv::Mat*>(dst);
                   });
  m_observer.OnBegin(static_cast<int>(m_stitched.size()));
  m_lastDone = std::chrono::steady_clock::now();
  const CallEnd end = CallGuarded([this] {
    QMetaObject::invokeMethod(m_stitcher.get(), "slotStartStitching", Qt::DirectConnection);
  });
  TellUnsettled();
  // The last step of the slot, trimming, fails where the content box has become
  // unusable; the mosaic is complete then. Anything earlier ends the run.
  if (end.raised && m_done < m_stitched.size()) ExplainFailure(m_stitched[m_done], end.what);
}

// A file that was readable when the run began may have changed since.
void BatchSession::ExplainFailure(std::size_t file, const std::string& what) {
  m_failed = file;
  std::string why;
  const cv::Size size = ReadPicture(m_files[file], cv::IMREAD_COLOR, why, m_maxPixels).size();
  if (!why.empty()) {
    SetUnreadable(why, m_results[file]);
  } else if (m_judge && size != m_judge->FrameSize()) {
    SetSizeDiffers(size, m_judge->FrameSize(), m_results[file]);
  } else {
    SetFailed(what, m_results[file]);
  }
}

void BatchSession::OnFileDone() {
  TellUnsettled();
  const std::size_t file = m_stitched[m_done];
  FrameResult& result = m_results[file];
  if (m_done == 0 && !OnFirstFile(result)) return;
  if (m_done > 0) {
    m_judge->Judge(
        *m_stitcher, [this, file] { return Reduced(file); }, result);
  }
  ++m_done;
  const auto now = std::chrono::steady_clock::now();
  result.seconds = std::chrono::duration<double>(now - m_lastDone).count();
  m_lastDone = now;
  if (m_judge->IsUnsettled()) {
    m_unsettled = file;
  } else {
    Tell(file, m_done);
  }
  if (m_stop.Requested()) {
    m_stopped = m_done < m_stitched.size();
    m_stitcher->RequestStop();
  }
}

void BatchSession::TellUnsettled() {
  if (!m_unsettled) return;
  m_judge->Settle(m_results[*m_unsettled]);
  Tell(*m_unsettled, m_done);
  m_unsettled.reset();
}

void BatchSession::Tell(std::size_t file, std::size_t done) {
  m_told[file] = true;
  m_observer.OnFrame(m_results[file], static_cast<int>(done));
}

// The library does not hand out the first frame, so it is read again.
bool BatchSession::OnFirstFile(FrameResult& result) {
  const cv::Mat first = ReadTakenIn(m_stitched[0]);
  if (first.empty()) {
    SetUnreadable("it is damaged or cut short", result);
    m_failed = m_stitched[0];
    m_stitcher->RequestStop();
    return false;
  }
  m_judge.emplace(BatchSettings(), first);
  m_judge->JudgeFirst(result);
  return true;
}

// Small pictures are kept for all files, whole ones for none.
ReducedFrame BatchSession::Reduced(std::size_t file) const {
  return m_reduced[file].grey.empty() ? ReduceFrame(ReadTakenIn(file)) : m_reduced[file];
}

// Empty when the file cannot be read any more.
cv::Mat BatchSession::ReadTakenIn(std::size_t file) const {
  std::string why;
  cv::Mat picture = ReadPicture(m_files[file], cv::IMREAD_COLOR, why, m_maxPixels);
  if (!picture.empty()) JQStitchingAlgorithm().JudgeImageChannel(picture, picture);
  return picture;
}

void BatchSession::CloseResults(const std::string& whyNotReached) {
  for (std::size_t i = 0; i < m_results.size(); ++i) {
    if (m_results[i].cause == Cause::kNotReached) SetNotReached(whyNotReached, m_results[i]);
    if (!m_told[i]) m_observer.OnFrame(m_results[i], static_cast<int>(m_done));
    m_told[i] = true;
  }
}

const FrameResult* BatchSession::FailedFile() const {
  return m_failed ? &m_results[*m_failed] : nullptr;
}

Picture BatchSession::FinalPicture(bool trim) const {
  if (!m_judge) return Picture();
  Picture picture = TakePicture(*m_stitcher, trim);
  if (trim && !picture.image.empty() && IsContentBoxExact(*m_stitcher)) {
    // Stopped early, the stitcher has not trimmed; the pixels are the same.
    if (m_trimmed != nullptr && !m_trimmed->empty()) picture.image = *m_trimmed;
    picture.trimmedBy = "content box";
  }
  return OrFirstFrame(picture, *m_judge);
}

void BatchSession::Describe(const Picture& picture, RunRecord& record) const {
  if (m_judge) DescribeGeometry(*m_stitcher, *m_judge, picture, record);
}

}  // namespace jqhost
