#include "view/minimap.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace jqscope {

Minimap::Minimap(TilePyramid& tiles, QWidget* parent) : QWidget(parent), m_tiles(tiles) {
  setMinimumSize(160, 120);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setAccessibleName(tr("Map"));
  setToolTip(
      tr("What is covered, the way of the camera, and the part in view. Click to go there."));
}

void Minimap::Show(const RunReport& report) {
  m_report = report;
  update();
}

void Minimap::ShowView(const QRectF& visible) {
  m_visible = visible;
  update();
}

QRectF Minimap::World() const {
  QRectF world = QRectF(m_report.bounds);
  if (m_report.hasFrame) world = world.united(m_report.liveRect);
  const double room = 0.05 * std::max(world.width(), world.height());
  return world.adjusted(-room, -room, room, room);
}

QTransform Minimap::ToMap() const {
  const QRectF world = World();
  if (world.isEmpty()) return QTransform();
  const double scale = std::min(width() / world.width(), height() / world.height());
  QTransform transform;
  transform.translate(width() / 2.0, height() / 2.0);
  transform.scale(scale, scale);
  transform.translate(-world.center().x(), -world.center().y());
  return transform;
}

void Minimap::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), QColor(38, 40, 43));
  const QTransform toMap = ToMap();
  const double scale = toMap.m11() * devicePixelRatioF();
  // Tiles fine enough for the map; the whole mosaic is few of them.
  const int level =
      std::clamp(static_cast<int>(std::floor(-std::log2(scale))), 0, TilePyramid::kLevels - 1);
  const double side = std::ldexp(TilePyramid::kSide, level);
  const QRectF bounds(m_report.bounds);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  for (int y = static_cast<int>(std::floor(bounds.top() / side)); y * side < bounds.bottom(); ++y) {
    for (int x = static_cast<int>(std::floor(bounds.left() / side)); x * side < bounds.right();
         ++x) {
      const QImage tile = m_tiles.Tile({level, x, y});
      if (!tile.isNull()) {
        painter.drawImage(toMap.mapRect(QRectF(x * side, y * side, side, side)), tile);
      }
    }
  }
  painter.setRenderHint(QPainter::Antialiasing);
  const QPointF middle(m_report.frameSize.width() / 2.0, m_report.frameSize.height() / 2.0);
  QPolygonF path;
  for (const QPoint& corner : m_report.path) path.append(toMap.map(QPointF(corner) + middle));
  painter.setPen(QPen(QColor(0, 0, 0, 160), 3));
  painter.drawPolyline(path);
  painter.setPen(QPen(QColor(255, 255, 255, 220), 1.2));
  painter.drawPolyline(path);
  if (m_report.hasFrame) {
    const LiveStyle style = StyleOf(m_report.state);
    painter.setPen(QPen(style.colour, 2, style.line));
    painter.drawRect(toMap.mapRect(m_report.liveRect));
  }
  painter.setPen(QPen(QColor(255, 214, 0), 1.5));
  painter.drawRect(toMap.mapRect(m_visible).intersected(QRectF(rect()).adjusted(1, 1, -2, -2)));
}

void Minimap::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton)
    Q_EMIT clicked(ToMap().inverted().map(QPointF(event->pos())));
}

void Minimap::mouseMoveEvent(QMouseEvent* event) {
  Q_EMIT clicked(ToMap().inverted().map(QPointF(event->pos())));
}

}  // namespace jqscope
