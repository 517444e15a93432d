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
namespace {

// Leaves the slot from within a receiver of its signal. The receiver is connected
// directly and no event loop runs, so the exception passes through the signal
// like through a plain call, as the image library's errors do.
struct StopAsked {};

}  // namespace

BatchSession::BatchSession(const std::vector<BatchFile>& files, const StopToken& stop,
                           RunObserver& observer)
    : m_stop(stop), m_observer(observer), m_results(files.size()), m_told(files.size(), false) {
  for (std::size_t i = 0; i < files.size(); ++i) {
    m_files.push_back(files[i].path);
    m_results[i].name = files[i].name;
    m_results[i].number = static_cast<int>(i) + 1;
    if (!files[i].why.empty()) SetUnreadable(files[i].why, m_results[i]);
  }
}

bool BatchSession::Run(bool skipBad) {
  if (HasBadFiles(false, skipBad) && !skipBad) return false;
  if (Stitch()) return true;
  // Refused as a whole: now every file is looked at, to name the bad ones.
  if (!HasBadFiles(true, skipBad)) {
    throw InputError("the stitcher refused the files without a cause");
  }
  return skipBad && Stitch();
}

bool BatchSession::HasBadFiles(bool decode, bool skipBad) {
  const bool unfit = FindUnfitFiles(m_files, m_results);
  const bool odd = (decode || (unfit && !skipBad)) && FindOddFiles(m_files, m_results);
  return unfit || odd;
}

// Whether the stitcher took the list.
bool BatchSession::Stitch() {
  m_stitched.clear();
  m_stitcher.m_fileList.clear();
  for (std::size_t i = 0; i < m_files.size(); ++i) {
    if (m_results[i].cause != Cause::kNotReached) continue;
    m_stitched.push_back(i);
    m_stitcher.m_fileList.append(QString::fromLocal8Bit(m_files[i].c_str()));
  }
  if (m_stitched.empty()) return false;
  m_refused = false;
  InvokeSlot();
  return !m_refused;
}

void BatchSession::InvokeSlot() {
  const auto status = QObject::connect(&m_stitcher, &JQImageStitching::sglMultiImageProcessStatus,
                                       [this](const QString&) { OnFileDone(); });
  const auto finished = QObject::connect(
      &m_stitcher, &JQImageStitching::sglMultiImageProcessFinished, [this](void* dst) {
        m_refused = dst == nullptr;
        m_trimmed = static_cast<const cv::Mat*>(dst);
      });
  m_observer.OnBegin(static_cast<int>(m_stitched.size()));
  m_lastDone = std::chrono::steady_clock::now();
  const CallEnd end = CallGuarded([this] {
    try {
      QMetaObject::invokeMethod(&m_stitcher, "slotStartStitching", Qt::DirectConnection);
    } catch (const StopAsked&) {
      m_stopped = true;
    }
  });
  QObject::disconnect(status);
  QObject::disconnect(finished);
  // The last step of the slot, trimming, fails where the content box has become
  // unusable; the mosaic is complete then. Anything earlier ends the run.
  if (end.raised && m_done < m_stitched.size()) {
    m_failed = m_stitched[m_done];
    SetFailed(end.what, m_results[*m_failed]);
  }
}

void BatchSession::OnFileDone() {
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
  m_observer.OnFrame(result, static_cast<int>(m_done));
  if (m_stop.Requested()) throw StopAsked();
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
  Picture picture = TakePicture(m_stitcher, trim);
  if (trim && !picture.image.empty() && IsContentBoxExact(m_stitcher)) {
    // Stopped early, the stitcher has not trimmed; the pixels are the same.
    if (m_trimmed != nullptr) picture.image = *m_trimmed;
    picture.trimmedBy = "content box";
  }
  return OrFirstFrame(picture, *m_judge);
}

void BatchSession::Describe(const Picture& picture, RunRecord& record) const {
  if (m_judge) DescribeGeometry(m_stitcher, *m_judge, picture, record);
}

cv::Mat BatchSession::ReadTakenIn(std::size_t file) const {
  std::string why;
  cv::Mat picture = ReadPicture(m_files[file], cv::IMREAD_COLOR, why);
  if (!picture.empty()) JQStitchingAlgorithm().JudgeImageChannel(picture, picture);
  return picture;
}

}  // namespace jqhost
