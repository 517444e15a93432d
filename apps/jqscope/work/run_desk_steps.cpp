// Steps back, places gone on from, and the drift.
#include <QCoreApplication>
#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

#include "host/source/image_record.h"
#include "work/drift.h"
#include "work/run_desk.h"

namespace jqscope {
namespace {

constexpr int kDriftHistory = 120;

struct DeskWords {
  Q_DECLARE_TR_FUNCTIONS(RunDesk)
};

}  // namespace

// Steps that can be taken back each keep three pictures of a frame's size.
void RunDesk::LetUndo(cv::Size frame) {
  constexpr double kBytes = 300e6;
  const double steps = kBytes / (9.0 * std::max(1.0, frame.area() * 1.0));
  m_session->Stitcher().SetUndoDepth(std::clamp(static_cast<int>(steps), 3, 20));
}

void RunDesk::KeepUndo(cv::Point origin) {
  const int number = m_journal ? m_journal->LastNumber() : 0;
  m_undo.push_back({origin, m_lastPlaced, m_report.path, m_mosaicShown, number});
  const auto most = static_cast<std::size_t>(m_session->Stitcher().GetUndoCount());
  while (m_undo.size() > most) m_undo.pop_front();
}

void RunDesk::Undo() {
  // A step back writes into the mosaic where it lies.
  if (!m_sharedPixels.expired()) {
    return Tell(DeskWords::tr("The picture is being saved: frames can be taken back after that"));
  }
  if (!m_session || m_undo.empty() ||
      !m_session->UndoTo(m_undo.back().origin, m_undo.back().lastPlaced)) {
    return Tell(DeskWords::tr("There is nothing to take back"));
  }
  const UndoStep step = m_undo.back();
  m_undo.pop_back();
  if (m_journal) m_journal->AddUndo(step.number);
  const bool wasFrame = m_report.path.size() > step.path.size();
  const cv::Rect changed(m_lastPlaced, m_session->Judge().WorkingSize());
  m_lastPlaced = step.lastPlaced;
  m_report.path = step.path;
  m_mosaicShown = step.mosaicShown;
  if (wasFrame) --m_report.causes[jqhost::Cause::kPlaced];
  ShowMosaic(changed);
  Tell(wasFrame ? DeskWords::tr("The last frame is taken back")
                : DeskWords::tr("Going on from the frame placed last again"));
}

void RunDesk::ContinueAround(cv::Point centre) {
  if (!m_session || !m_session->HasStarted()) return;
  const QSize size = m_report.frameSize;
  // A click near the edge means the outermost frame there.
  const QRect bounds = m_report.bounds;
  const cv::Point place(
      std::clamp(centre.x - size.width() / 2, bounds.left(), bounds.right() + 1 - size.width()),
      std::clamp(centre.y - size.height() / 2, bounds.top(), bounds.bottom() + 1 - size.height()));
  Tell(ContinueAt(place)
           ? DeskWords::tr("Going on from here: bring this place under the camera")
           : DeskWords::tr("A whole frame of picture is needed to go on from a place"));
}

bool RunDesk::ContinueAt(cv::Point place) {
  const cv::Point origin = m_session->Judge().Origin();
  if (!m_session->ContinueAt(place)) return false;
  if (m_journal) m_journal->AddContinue(place);
  KeepUndo(origin);
  m_lastPlaced = place;
  m_report.lastPlaced = QRect(QPoint(place.x, place.y), m_report.frameSize);
  m_report.undoSteps =
      std::min(static_cast<int>(m_undo.size()), m_session->Stitcher().GetUndoCount());
  return true;
}

void RunDesk::LookForLost(const cv::Mat& image) {
  m_lost.Follow(m_report.state == LiveState::kLost || m_report.state == LiveState::kTooFar);
  if (!findsLost || !search || !m_lost.IsLost()) return;
  const jqhost::FrameJudge& judge = m_session->Judge();
  m_lost.Look(image,
              {m_session->Stitcher().GetMosaic(), judge.Origin(), judge.WorkingSize(),
               m_report.path, m_place},
              search);
}

void RunDesk::GoOnAt(cv::Point place) {
  if (m_report.phase != RunPhase::kRunning || !m_lost.IsLost() || !ContinueAt(place)) return;
  m_lost.Clear();
  Tell(DeskWords::tr("Found: the run goes on from an earlier place"));
}

// Only for frames that were measured and not painted: where one was placed, the ground is
// its own.
void RunDesk::FollowDrift(const cv::Mat& image) {
  m_report.hasDrift = false;
  if (m_report.state != LiveState::kTracked) return;
  const cv::Mat mosaic = m_session->Stitcher().GetMosaic();
  if (mosaic.empty()) return;
  const jqhost::FrameJudge& judge = m_session->Judge();
  cv::Mat frame = jqhost::AsTakenIn(image);
  if (frame.size() != judge.WorkingSize()) cv::resize(frame, frame, judge.WorkingSize());
  const std::optional<cv::Point2d> drift =
      MeasureDrift(mosaic, frame, m_place + judge.Origin(),
                   cv::Rect(m_lastPlaced + judge.Origin(), judge.WorkingSize()));
  if (!drift) return;
  m_report.hasDrift = true;
  m_report.drift = std::hypot(drift->x, drift->y);
  m_report.driftHistory.append(static_cast<float>(m_report.drift));
  if (m_report.driftHistory.size() > kDriftHistory) m_report.driftHistory.removeFirst();
}

void RunDesk::Tell(const QString& notice) {
  m_report.notice = notice;
  ++m_report.noticeNumber;
}

}  // namespace jqscope
