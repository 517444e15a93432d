#include "work/run_desk.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

#include "host/input_error.h"

using jqhost::FrameResult;

namespace jqscope {
namespace {

// The live frame is shown at most this wide; the mosaic below it has all pixels.
constexpr int kLiveWidth = 1024;

QImage ToImage(const cv::Mat& frame) {
  cv::Mat small = frame;
  if (frame.cols > kLiveWidth) {
    cv::resize(frame, small,
               cv::Size(kLiveWidth, std::max(1, frame.rows * kLiveWidth / frame.cols)), 0, 0,
               cv::INTER_AREA);
  }
  if (small.depth() == CV_16U) {
    small = jqhost::ScaleToEightBits(small, jqhost::SmallestDepth(jqhost::LargestSample(small)));
  }
  if (small.depth() != CV_8U) return QImage();
  cv::Mat colour;
  switch (small.channels()) {
    case 1:
      cv::cvtColor(small, colour, cv::COLOR_GRAY2BGRA);
      break;
    case 3:
      cv::cvtColor(small, colour, cv::COLOR_BGR2BGRA);
      break;
    default:
      colour = small;
  }
  return QImage(colour.data, colour.cols, colour.rows, static_cast<int>(colour.step),
                QImage::Format_RGB32)
      .copy();
}

QRect ToRect(const cv::Rect& r) {
  return QRect(r.x, r.y, r.width, r.height);
}

}  // namespace

RunDesk::RunDesk(TilePyramid& tiles) : m_tiles(tiles) {}

void RunDesk::Begin(const RunSettings& settings,
                    std::unique_ptr<jqhost::FramePreparation> preparation,
                    std::unique_ptr<jqhost::PushSession> session, JournalEnd earlier) {
  m_settings = settings;
  m_preparation = std::move(preparation);
  m_session = std::move(session);
  m_batch.reset();
  m_sharedPixels.reset();
  m_undo.clear();
  m_lost.Clear();
  m_tiles.Clear();
  m_reckoning.Clear();
  m_rate.Clear();
  m_place = m_lastPlaced = cv::Point();
  m_mosaicShown = false;
  m_report = RunReport();
  m_report.phase = RunPhase::kRunning;
  m_report.detectLevel = settings.stitch.detectLevel;
  m_report.mostMemory = settings.mostMemory;
  EndJournal(earlier);
}

void RunDesk::Pause(bool pause) {
  if (pause && m_report.phase == RunPhase::kRunning) m_report.phase = RunPhase::kPaused;
  if (!pause && m_report.phase == RunPhase::kPaused) m_report.phase = RunPhase::kRunning;
}

void RunDesk::Stop() {
  if (m_report.phase == RunPhase::kRunning || m_report.phase == RunPhase::kPaused) {
    m_report.phase = RunPhase::kStopped;
    if (m_journal) m_journal->Settle();
    CheckJournal();
  }
}

void RunDesk::Take(const TimedFrame& timed) {
  if (timed.isEnd) {
    const bool going = m_report.phase == RunPhase::kRunning || m_report.phase == RunPhase::kPaused;
    if (going) m_report.phase = RunPhase::kEnded;
    if (m_journal) m_journal->Settle();
    CheckJournal();
    return;
  }
  m_report.hasFrame = true;
  m_report.taken = timed.taken;
  CheckJournal();
  if (m_report.phase == RunPhase::kRunning) {
    Stitch(timed.frame);
  } else if (!timed.frame.image.empty()) {
    m_report.state = LiveState::kNone;
    if (!m_session) {
      m_report.liveRect = QRectF(0, 0, timed.frame.image.cols, timed.frame.image.rows);
    }
    Show(timed.frame.image);
  }
}

void RunDesk::Prepare(jqhost::SourceFrame& frame) {
  if (frame.image.empty()) return;
  frame.why = jqhost::WhyNotSamples(frame.image);
  try {
    frame.image = frame.why.empty() ? m_preparation->Prepare(frame.image) : cv::Mat();
  } catch (const jqhost::InputError& error) {
    frame.image.release();
    frame.why = error.what();
  }
}

void RunDesk::Stitch(jqhost::SourceFrame frame) {
  Prepare(frame);
  if (onStitched) onStitched(frame);
  std::optional<cv::Point> before;
  if (m_session->HasStarted()) {
    before = m_session->Judge().Origin();
  } else if (!frame.image.empty()) {
    LetUndo(frame.image.size());
  }
  const FrameResult result = m_session->Take(frame);
  if (result.Placed() && before) KeepUndo(*before);
  ++m_report.stitched;
  ++m_report.causes[result.cause];
  m_report.last = result;
  m_report.state = LiveStateOf(result);
  m_report.outOfMemory = m_session->OutOfMemory();
  m_rate.Add(Clock::now());
  m_report.framesPerSecond = m_rate.PerSecond();
  if (frame.image.empty() || !m_session->HasStarted()) return;
  if (frame.image.size() == m_session->Judge().FrameSize()) {
    Locate(result, frame.image);
    FollowDrift(frame.image);
    LookForLost(frame.image);
  }
  if (result.Placed()) OnPlaced(result);
  Show(frame.image);
}

// Where the frame lies: measured, or reckoned from the frame before.
void RunDesk::Locate(const FrameResult& result, const cv::Mat& image) {
  const cv::Size size = m_session->Judge().WorkingSize();
  const cv::Point2d step = m_reckoning.Step(image) * (1.0 / m_settings.stitch.detectLevel);
  const bool matched =
      result.measured.registered && result.measured.matchCount >= JQFrameVerdict::kMatchesNeeded;
  cv::Point place;
  if (result.Placed()) {
    place = result.position;
  } else if (matched) {
    place = m_lastPlaced + result.measured.offset;
  } else {
    place = m_place + cv::Point(cvRound(step.x), cvRound(step.y));
  }
  const cv::Point moved = place - m_place;
  const bool isFirst = m_report.stitched == 1;
  m_report.speed = isFirst ? 0.0
                           : std::max(std::abs(moved.x) / static_cast<double>(size.width),
                                      std::abs(moved.y) / static_cast<double>(size.height));
  m_report.liveMeasured = result.Placed() || matched;
  m_report.liveRect = QRectF(place.x, place.y, size.width, size.height);
  m_report.frameSize = QSize(size.width, size.height);
  m_place = place;
}

void RunDesk::OnPlaced(const FrameResult& result) {
  const jqhost::FrameJudge& judge = m_session->Judge();
  m_lastPlaced = result.position;
  m_report.path.append(QPoint(result.position.x, result.position.y));
  ShowMosaic(cv::Rect(result.position, judge.WorkingSize()));
}

// Paints what has changed; after a step back too.
void RunDesk::ShowMosaic(const cv::Rect& placed) {
  const jqhost::FrameJudge& judge = m_session->Judge();
  const JQImageStitching& stitcher = m_session->Stitcher();
  m_report.lastPlaced = ToRect(cv::Rect(m_lastPlaced, judge.WorkingSize()));
  m_report.undoSteps = std::min(static_cast<int>(m_undo.size()), stitcher.GetUndoCount());
  const cv::Mat mosaic = stitcher.GetMosaic();
  if (mosaic.empty()) {
    // There is no mosaic before the second frame.
    cv::Mat first = judge.FirstFrame();
    if (first.size() != judge.WorkingSize()) cv::resize(first, first, judge.WorkingSize());
    m_tiles.Clear();
    m_tiles.Paint(first, cv::Point(), cv::Rect(cv::Point(), first.size()));
    m_report.bounds = m_report.canvas = m_report.lastPlaced;
    return;
  }
  const cv::Rect bounds = stitcher.GetPlacedBounds() - judge.Origin();
  m_tiles.Paint(mosaic, judge.Origin(), m_mosaicShown ? placed : bounds);
  m_mosaicShown = true;
  m_report.bounds = ToRect(bounds);
  m_report.canvas = ToRect(cv::Rect(-judge.Origin(), mosaic.size()));
  m_report.mosaicBytes = static_cast<std::int64_t>(mosaic.total() * mosaic.elemSize());
}

void RunDesk::Show(const cv::Mat& image) {
  m_report.live = ToImage(image);
}

bool RunDesk::PaintWanted() {
  if (m_batch) return m_batch->PaintWanted();
  if (!m_session || !m_session->HasStarted()) return false;
  const cv::Mat mosaic = m_session->Stitcher().GetMosaic();
  return !mosaic.empty() && m_tiles.PaintWanted(mosaic, m_session->Judge().Origin());
}

Snapshot RunDesk::TakeSnapshot(bool trim) {
  if (m_batch) return m_batch->TakeSnapshot(trim);
  Snapshot snapshot;
  if (!m_session || !m_session->HasStarted()) return snapshot;
  snapshot.picture = m_session->PictureSoFar(trim);
  snapshot.grey = m_preparation->Summary().grey;
  if (m_report.phase == RunPhase::kRunning || m_report.phase == RunPhase::kPaused) {
    snapshot.picture.image = snapshot.picture.image.clone();
  } else {
    snapshot.shared = m_sharedPixels.lock();
    if (!snapshot.shared) m_sharedPixels = snapshot.shared = std::make_shared<const bool>(true);
  }
  return snapshot;
}

}  // namespace jqscope
