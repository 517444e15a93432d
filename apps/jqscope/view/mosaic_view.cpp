#include "view/mosaic_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "view/overlay.h"

namespace jqscope {
namespace {

const QColor kGround(38, 40, 43);
// A step of the wheel.
constexpr double kWheelFactor = 1.25;

// What a picture that is not trimmed will have around the frames.
void DrawSavedEdge(QPainter& painter, const QRectF& saved) {
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(0, 0, 0, 140), 2));
  painter.drawRect(saved);
  painter.setPen(QPen(Qt::white, 1, Qt::DashLine));
  painter.drawRect(saved);
}

}  // namespace

MosaicView::MosaicView(TilePyramid& tiles, QWidget* parent) : QWidget(parent), m_tiles(tiles) {
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(200, 150);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAccessibleName(tr("Mosaic"));
  setAccessibleDescription(tr("The picture so far and the frame under the camera"));
}

QRectF MosaicView::Content() const {
  QRectF content = Saved();
  if (m_report.hasFrame) content = content.united(m_report.liveRect);
  return content;
}

void MosaicView::Show(const RunReport& report) {
  const bool newCanvas = report.canvas != m_report.canvas && !m_trimmed;
  const bool grew =
      report.bounds != m_report.bounds || report.liveRect != m_report.liveRect || newCanvas;
  const bool newPhase = report.phase != m_report.phase;
  const bool placed = report.path.size() != m_report.path.size();
  const QRectF before = m_transform.ToScreen(OverlayBounds(m_report));
  m_unshown = report.hasFrame && (m_unshown || report.taken != m_report.taken);
  m_report = report;
  bool moved = false;
  if (m_fitting && (grew || !m_everShown)) {
    const QRectF visible = m_transform.Visible();
    // Room for growth, so that the picture is not redrawn with every frame.
    const QRectF content = Content();
    const bool tooSmall =
        std::max(content.width() / visible.width(), content.height() / visible.height()) < 0.6;
    if (!visible.contains(content) || tooSmall || !m_everShown) {
      const double room = m_report.path.size() > 1 ? 0.12 : 0.0;
      m_transform.Fit(content.adjusted(-room * content.width(), -room * content.height(),
                                       room * content.width(), room * content.height()));
      moved = true;
    }
    m_everShown = m_report.hasFrame;
  } else if (m_follow && !m_fitting && m_report.hasFrame) {
    moved = m_transform.Follow(m_report.liveRect);
  }
  if (moved) return Moved();
  if (newCanvas || newPhase) return update();
  QRectF dirty = before.united(m_transform.ToScreen(OverlayBounds(m_report)));
  if (placed) dirty = dirty.united(m_transform.ToScreen(QRectF(m_report.lastPlaced)));
  update(dirty.toAlignedRect().adjusted(-kOverlayMargin, -kOverlayMargin, kOverlayMargin,
                                        kOverlayMargin));
}

void MosaicView::Moved() {
  update();
  Q_EMIT viewChanged();
}

// From now on the view stays where the person put it.
void MosaicView::UserMoved() {
  m_fitting = false;
  SetFollowing(false);
  Moved();
}

void MosaicView::SetFollowing(bool follow) {
  if (follow == m_follow) return;
  m_follow = follow;
  if (follow && m_report.hasFrame && !m_fitting && m_transform.Follow(m_report.liveRect)) Moved();
  Q_EMIT followingChanged(follow);
}

void MosaicView::Fit() {
  m_fitting = true;
  m_transform.Fit(Content());
  SetFollowing(true);
  Moved();
}

void MosaicView::OneToOne() {
  m_fitting = false;
  m_transform.SetScale(1.0 / devicePixelRatioF());
  if (m_follow && m_report.hasFrame) m_transform.CentreOn(m_report.liveRect.center());
  Moved();
}

void MosaicView::ZoomBy(double factor) {
  m_fitting = false;
  m_transform.ZoomAt(QPointF(width() / 2.0, height() / 2.0), factor);
  Moved();
}

void MosaicView::PanBy(QPointF screen) {
  m_transform.PanBy(screen);
  UserMoved();
}

void MosaicView::CentreOn(QPointF mosaic) {
  m_transform.CentreOn(mosaic);
  UserMoved();
}

void MosaicView::SetBackground(const std::optional<QColor>& colour) {
  m_background = colour;
  update();
}

void MosaicView::SetTrimmed(bool trimmed) {
  m_trimmed = trimmed;
  if (m_fitting) m_transform.Fit(Content());
  Moved();
}

void MosaicView::SetPixelSize(double micrometres) {
  if (micrometres == m_pixelSize) return;
  m_pixelSize = micrometres;
  update();
}

QImage MosaicView::Grab() {
  return grab().toImage();
}

QRect MosaicView::TileOnScreen(const TileKey& key) const {
  const double side = std::ldexp(TilePyramid::kSide, key.level);
  const double ratio = devicePixelRatioF();
  const QPointF from = m_transform.ToScreen(QPointF(key.x * side, key.y * side)) * ratio;
  const QPointF to = m_transform.ToScreen(QPointF((key.x + 1) * side, (key.y + 1) * side)) * ratio;
  // Both tiles of an edge round it alike, so that no gap shows between them.
  const QPoint a(static_cast<int>(std::floor(from.x())), static_cast<int>(std::floor(from.y())));
  const QPoint b(static_cast<int>(std::floor(to.x())), static_cast<int>(std::floor(to.y())));
  return QRect(a, QSize(b.x() - a.x(), b.y() - a.y()));
}

// Draws the tile, or the part of a coarser one that stands for it.
bool MosaicView::DrawTile(QPainter& painter, const TileKey& key, const QRect& target) {
  const QImage tile = m_tiles.Tile(key);
  if (!tile.isNull()) {
    painter.drawImage(target, tile);
    return true;
  }
  if (!m_tiles.IsLetGo(key)) return true;  // nothing was ever placed there
  for (int up = 1; key.level + up < TilePyramid::kLevels; ++up) {
    const TileKey coarse{key.level + up, key.x >> up, key.y >> up};
    const QImage image = m_tiles.Tile(coarse);
    if (image.isNull()) continue;
    const double side = std::ldexp(TilePyramid::kSide, -up);
    painter.drawImage(
        QRectF(target), image,
        QRectF((key.x - (coarse.x << up)) * side, (key.y - (coarse.y << up)) * side, side, side));
    break;
  }
  return false;
}

void MosaicView::DrawTiles(QPainter& painter, const QRect& clip) {
  const double ratio = devicePixelRatioF();
  const double scale = m_transform.Scale() * ratio;
  // The coarsest level that still has a pixel for each of the screen's.
  const int level = std::clamp(static_cast<int>(std::floor(-std::log2(scale) + 1e-9)), 0,
                               TilePyramid::kLevels - 1);
  const double side = std::ldexp(TilePyramid::kSide, level);
  const QRectF visible = QRectF(m_transform.ToMosaic(clip.topLeft()),
                                m_transform.ToMosaic(clip.bottomRight() + QPoint(1, 1)))
                             .intersected(QRectF(m_report.bounds));
  if (visible.isEmpty()) return;
  painter.setRenderHint(QPainter::SmoothPixmapTransform, scale < 1.0);
  std::vector<TileKey> missing;
  for (int y = static_cast<int>(std::floor(visible.top() / side)); y * side < visible.bottom();
       ++y) {
    for (int x = static_cast<int>(std::floor(visible.left() / side)); x * side < visible.right();
         ++x) {
      const TileKey key{level, x, y};
      if (!DrawTile(painter, key, TileOnScreen(key))) missing.push_back(key);
    }
  }
  if (missing.empty()) return;
  m_tiles.Want(std::move(missing));
  Q_EMIT tilesWanted();
}

void MosaicView::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.fillRect(event->rect(), kGround);
  const QRectF saved = m_transform.ToScreen(Saved());
  if (m_background) painter.fillRect(saved, *m_background);
  const double ratio = devicePixelRatioF();
  painter.save();
  painter.scale(1 / ratio, 1 / ratio);
  DrawTiles(painter, event->rect());
  painter.restore();
  if (!m_trimmed) DrawSavedEdge(painter, saved);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  DrawOverlay(painter, m_report, m_transform);
  if (m_pixelSize > 0) DrawScaleBar(painter, rect(), m_pixelSize / m_transform.Scale());
  if (std::exchange(m_unshown, false)) {
    Q_EMIT shown(std::chrono::duration<double>(Clock::now() - m_report.taken).count());
  }
}

void MosaicView::resizeEvent(QResizeEvent*) {
  m_transform.SetScreen(size());
  if (m_fitting) m_transform.Fit(Content());
  Q_EMIT viewChanged();
}

void MosaicView::wheelEvent(QWheelEvent* event) {
  const double steps = event->angleDelta().y() / 120.0;
  if (steps == 0) return event->ignore();
  m_fitting = false;
  m_transform.ZoomAt(event->position(), std::pow(kWheelFactor, steps));
  Moved();
  event->accept();
}

void MosaicView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  if ((event->modifiers() & Qt::ControlModifier) != 0) {
    const QPointF place = m_transform.ToMosaic(event->pos());
    Q_EMIT placePicked(
        QPoint(static_cast<int>(std::floor(place.x())), static_cast<int>(std::floor(place.y()))));
    return;
  }
  m_dragFrom = event->pos();
  m_dragging = true;
  setCursor(Qt::ClosedHandCursor);
}

void MosaicView::mouseMoveEvent(QMouseEvent* event) {
  if (!m_dragging || event->pos() == m_dragFrom) return;
  const QPoint by = event->pos() - m_dragFrom;
  m_dragFrom = event->pos();
  PanBy(by);
}

void MosaicView::mouseReleaseEvent(QMouseEvent*) {
  m_dragging = false;
  unsetCursor();
}

void MosaicView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) Fit();
}

}  // namespace jqscope
