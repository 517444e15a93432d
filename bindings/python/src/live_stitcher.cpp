#include "live_stitcher.h"

#include <algorithm>
#include <stdexcept>

#include "errors.h"
#include "host/output/picture.h"
#include "host/output/picture_format.h"
#include "host/output/save_picture.h"
#include "host/size_text.h"
#include "host/source/image_record.h"
#include "host/verdict/frame_judge.h"

namespace jqpython {

LiveStitcher::LiveStitcher(const jqhost::StitchSettings& settings, int undoDepth,
                           std::int64_t memoryLimit)
    : m_settings(settings) {
  m_stitcher.SetUndoDepth(undoDepth);
  m_stitcher.SetMemoryLimit(memoryLimit);
}

// The stitcher does not compare sizes itself.
void LiveStitcher::CheckFrame(const cv::Mat& frame) const {
  const auto shape = [](cv::Size size) {
    return "(" + std::to_string(size.height) + ", " + std::to_string(size.width) + ")";
  };
  if (!m_frameSize.empty() && frame.size() != m_frameSize) {
    throw std::invalid_argument("frame: height and width are " + shape(frame.size()) +
                                ", but those of this run's frames are " + shape(m_frameSize));
  }
  if (std::min(frame.cols, frame.rows) < m_settings.detectLevel) {
    throw std::invalid_argument(
        "frame: height and width " + shape(frame.size()) +
        " are too small for detect_level=" + std::to_string(m_settings.detectLevel));
  }
}

Verdict LiveStitcher::Add(const cv::Mat& frame) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  CheckFrame(frame);
  _tagJQIMG record = jqhost::MakeRecord(frame);
  m_stitcher.Stitching(&record, m_settings.overlapMode, m_settings.detectLevel,
                       m_settings.cornerBudget);
  m_frameSize = frame.size();
  m_grey = m_grey && frame.channels() == 1;
  const JQFrameVerdict measured = m_stitcher.GetLastVerdict();
  jqhost::FrameResult result;
  jqhost::CopyVerdict(measured, m_settings, result);
  Verdict verdict = MakeVerdict(result, m_settings.detectLevel);
  if (measured.cause == JQFrameCause::kPlaced) verdict.position = m_stitcher.GetCurrentPosition();
  return verdict;
}

cv::Mat LiveStitcher::Mosaic() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return m_stitcher.GetMosaic();
}

std::optional<std::array<int, 4>> LiveStitcher::ContentBox() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  if (m_stitcher.GetMosaic().empty()) return std::nullopt;
  const cv::Point least = m_stitcher.GetContentMin();
  const cv::Point most = m_stitcher.GetContentMax();
  return std::array<int, 4>{least.x, least.y, most.x, most.y};
}

std::optional<std::array<int, 4>> LiveStitcher::PlacedBounds() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  const cv::Rect bounds = m_stitcher.GetPlacedBounds();
  if (bounds.empty()) return std::nullopt;
  return std::array<int, 4>{bounds.x, bounds.y, bounds.br().x, bounds.br().y};
}

bool LiveStitcher::Undo() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return m_stitcher.UndoLastFrame();
}

bool LiveStitcher::ContinueAt(cv::Point topLeft) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return m_stitcher.ContinueAt(topLeft);
}

SavedRun LiveStitcher::SaveState() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return {m_stitcher.SaveState(), m_settings, m_frameSize, m_grey};
}

void LiveStitcher::RestoreState(const SavedRun& saved) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_stitcher.RestoreState(saved.state);
  m_settings = saved.settings;
  m_frameSize = saved.frameSize;
  m_grey = saved.grey;
}

void LiveStitcher::Save(const MosaicFile& file) const {
  jqhost::CheckPictureFormat(file.path);
  const std::lock_guard<std::mutex> lock(m_mutex);
  const jqhost::Picture picture =
      file.trim ? jqhost::TrimPicture(m_stitcher) : jqhost::TakePicture(m_stitcher, false);
  if (picture.image.empty()) throw NoMosaicError();
  jqhost::SaveOptions options;
  options.path = file.path;
  options.background = file.background;
  options.grey = m_grey;
  if (file.pixelSize) {
    const int level = m_settings.detectLevel;
    const cv::Size working(m_frameSize.width / level, m_frameSize.height / level);
    options.pixelSize = cv::Size2d(*file.pixelSize * m_frameSize.width / working.width,
                                   *file.pixelSize * m_frameSize.height / working.height);
  }
  jqhost::SavePicture(picture.image, options, jqhost::SaveProgress(), jqhost::StopToken());
}

}  // namespace jqpython
