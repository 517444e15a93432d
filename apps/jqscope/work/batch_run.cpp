#include "work/batch_run.h"

#include <exception>
#include <utility>

#include "host/source/path_list.h"
#include "words/batch_words.h"

namespace jqscope {
namespace {

// Several files are dropped in an order that nobody chose.
std::vector<std::string> InOrder(std::vector<std::string> paths) {
  jqhost::SortNaturally(paths);
  return jqhost::ExpandFolders(paths, {});
}

QRect Bounds(const QVector<QPoint>& corners, QSize size) {
  QRect bounds;
  for (const QPoint& corner : corners) bounds = bounds.united(QRect(corner, size));
  return bounds;
}

}  // namespace

BatchRun::BatchRun(BatchOrder order, TilePyramid& tiles, RunReport& report,
                   std::function<void()> tell)
    : m_order(std::move(order)),
      m_tiles(tiles),
      m_report(report),
      m_tell(std::move(tell)),
      m_preparation(m_order.preparation) {
  m_report.batch.emplace();
  m_report.phase = RunPhase::kBatch;
}

void BatchRun::Run() {
  m_tell();
  try {
    Stitch();
  } catch (const std::exception& error) {
    m_report.batch->problem = QString::fromLocal8Bit(error.what());
  }
  m_report.phase = RunPhase::kEnded;
}

void BatchRun::Stitch() {
  const jqhost::StopToken& stop = *m_order.stop;
  m_files = std::make_unique<jqhost::BatchFiles>(jqhost::ExpandPages(InOrder(m_order.paths)),
                                                 m_preparation, jqhost::kMostPixels, stop);
  m_session = std::make_unique<jqhost::BatchSession>(m_files->Files(), jqhost::kMostPixels, stop,
                                                     static_cast<jqhost::RunObserver&>(*this));
  m_report.batch->files = static_cast<int>(m_files->Files().size());
  if (!stop.Requested()) m_session->Run(true);
  m_report.batch->stopped = stop.Requested() && (m_session->Stopped() || m_report.path.isEmpty());
  m_session->CloseResults(std::string());
  Paint();
}

// A file that turned out unusable while it was stitched makes the batch begin again.
void BatchRun::OnBegin(int total) {
  m_report.batch->stitching = total;
  m_report.batch->done = 0;
  m_report.batch->leftOut.clear();
  m_report.path.clear();
  m_report.causes.clear();
  m_tell();
}

void BatchRun::OnFrame(const jqhost::FrameResult& result, int done) {
  m_report.batch->done = done;
  ++m_report.causes[result.cause];
  m_report.last = result;
  if (result.Placed()) {
    m_report.path.append(QPoint(result.position.x, result.position.y));
    if (result.Doubtful()) m_report.batch->doubtful.append(FileName(result));
  } else {
    m_report.batch->leftOut.append(LeftOutText(result));
  }
  m_tell();
}

void BatchRun::Paint() {
  const jqhost::Picture whole = m_session->FinalPicture(false);
  if (whole.image.empty()) return;
  jqhost::RunRecord record;
  m_session->Describe(whole, record);
  m_mosaic = whole.image;
  m_origin = record.firstCorner;
  m_report.frameSize = QSize(record.workingSize.width, record.workingSize.height);
  m_report.bounds = Bounds(m_report.path, m_report.frameSize);
  m_report.lastPlaced = QRect(m_report.path.last(), m_report.frameSize);
  m_report.canvas = QRect(-m_origin.x, -m_origin.y, m_mosaic.cols, m_mosaic.rows);
  m_report.mosaicBytes = static_cast<std::int64_t>(m_mosaic.total() * m_mosaic.elemSize());
  m_tiles.Paint(m_mosaic, m_origin,
                cv::Rect(m_report.bounds.x(), m_report.bounds.y(), m_report.bounds.width(),
                         m_report.bounds.height()));
}

bool BatchRun::PaintWanted() {
  return !m_mosaic.empty() && m_tiles.PaintWanted(m_mosaic, m_origin);
}

Snapshot BatchRun::TakeSnapshot(bool trim) const {
  Snapshot snapshot;
  if (!m_session) return snapshot;
  snapshot.picture = m_session->FinalPicture(trim);
  snapshot.grey = m_preparation.Summary().grey;
  return snapshot;
}

}  // namespace jqscope
