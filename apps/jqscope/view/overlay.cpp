#include "view/overlay.h"

#include <QCoreApplication>
#include <QPainterPath>
#include <cmath>

namespace jqscope {
namespace {

struct OverlayWords {
  Q_DECLARE_TR_FUNCTIONS(Overlay)
};

bool PointsBack(const RunReport& report) {
  return report.phase == RunPhase::kRunning && !report.lastPlaced.isEmpty() &&
         (report.state == LiveState::kLost || report.state == LiveState::kTooFar);
}

void DrawTag(QPainter& painter, QPointF at, const QString& text, const QColor& colour) {
  QFont font = painter.font();
  font.setBold(true);
  painter.setFont(font);
  const QFontMetrics metrics(font);
  QRectF box(at.x(), at.y() - metrics.height() - 4, metrics.horizontalAdvance(text) + 12,
             metrics.height() + 4);
  // Inside the outline where there is no room above it.
  if (box.top() < 0 && at.y() >= 0) box.moveTop(at.y());
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  painter.drawRect(box);
  painter.setPen(Qt::white);
  painter.drawText(box, Qt::AlignCenter, text);
}

void DrawOutline(QPainter& painter, const QRectF& box, const QColor& colour, Qt::PenStyle line) {
  painter.setBrush(Qt::NoBrush);
  // A dark line below makes the outline stand out on any picture.
  painter.setPen(QPen(QColor(0, 0, 0, 140), 5));
  painter.drawRect(box);
  painter.setPen(QPen(colour, 3, line));
  painter.drawRect(box);
}

void DrawArrow(QPainter& painter, QPointF from, QPointF to, const QColor& colour) {
  const QPointF along = to - from;
  const double length = std::hypot(along.x(), along.y());
  if (length < 30) return;
  const QPointF unit = along / length, side(-unit.y(), unit.x());
  QPainterPath path;
  const QPointF head = to - unit * 22;
  path.moveTo(from + side * 4);
  path.lineTo(head + side * 4);
  path.lineTo(head + side * 13);
  path.lineTo(to);
  path.lineTo(head - side * 13);
  path.lineTo(head - side * 4);
  path.lineTo(from - side * 4);
  path.closeSubpath();
  painter.setPen(QPen(Qt::black, 1.5));
  painter.setBrush(colour);
  painter.drawPath(path);
}

// The point of the arrow: where the line from the frame's middle meets the target's edge,
// or its middle where the two overlap.
QPointF ArrowEnd(const QRectF& from, const QRectF& to) {
  const QPointF a = from.center(), b = to.center();
  if (from.intersects(to)) return b;
  const double dx = std::abs(b.x() - a.x()), dy = std::abs(b.y() - a.y());
  const double share =
      std::min(dx > 0 ? to.width() / 2 / dx : 1e9, dy > 0 ? to.height() / 2 / dy : 1e9);
  return b + (a - b) * std::min(share, 1.0);
}

}  // namespace

QRectF OverlayBounds(const RunReport& report) {
  QRectF bounds;
  if (report.hasFrame) bounds = report.liveRect;
  if (PointsBack(report)) bounds = bounds.united(QRectF(report.lastPlaced));
  return bounds;
}

void DrawOverlay(QPainter& painter, const RunReport& report, const ViewTransform& transform) {
  if (!report.hasFrame || report.live.isNull()) return;
  painter.save();
  const QRectF box = transform.ToScreen(report.liveRect);
  const LiveStyle style = StyleOf(report.state);
  const bool back = PointsBack(report);
  if (back) {
    const QRectF target = transform.ToScreen(QRectF(report.lastPlaced));
    painter.fillRect(target, QColor(255, 214, 0, 50));
    DrawOutline(painter, target, QColor(255, 214, 0), Qt::SolidLine);
  }
  // A frame whose place is not known is shown as a guess.
  painter.setOpacity(report.liveMeasured ? 1.0 : 0.6);
  painter.drawImage(box, report.live);
  painter.setOpacity(1.0);
  painter.setRenderHint(QPainter::Antialiasing);
  DrawOutline(painter, box, style.colour, style.line);
  if (back) {
    const QRectF target = transform.ToScreen(QRectF(report.lastPlaced));
    DrawTag(painter, target.topLeft(), OverlayWords::tr("go back here"), QColor(120, 96, 0));
    DrawArrow(painter, box.center(), ArrowEnd(box, target), QColor(255, 214, 0));
  }
  const QString word =
      report.liveMeasured ? style.word : OverlayWords::tr("%1, about here").arg(style.word);
  DrawTag(painter, back ? box.bottomLeft() + QPointF(0, 22) : box.topLeft(), word, style.colour);
  painter.restore();
}

double RoundLength(double most) {
  const double power = std::pow(10.0, std::floor(std::log10(most)));
  for (const double digit : {5.0, 2.0}) {
    if (digit * power <= most) return digit * power;
  }
  return power;
}

QString LengthText(double micrometres) {
  if (micrometres >= 1000) return OverlayWords::tr("%1 mm").arg(micrometres / 1000);
  if (micrometres >= 1) return OverlayWords::tr("%1 µm").arg(micrometres);
  return OverlayWords::tr("%1 nm").arg(micrometres * 1000);
}

void DrawScaleBar(QPainter& painter, const QRect& view, double micrometres) {
  const double length = RoundLength(micrometres * 0.2 * view.width());
  const double pixels = length / micrometres;
  const QRectF bar(view.left() + 20, view.bottom() - 26, pixels, 6);
  const QString text = LengthText(length);
  const QFontMetrics metrics(painter.font());
  const QRectF ground(bar.left() - 8, bar.top() - metrics.height() - 6,
                      std::max(pixels, static_cast<double>(metrics.horizontalAdvance(text))) + 16,
                      metrics.height() + 20);
  painter.fillRect(ground, QColor(0, 0, 0, 150));
  painter.fillRect(bar, Qt::white);
  painter.setPen(Qt::white);
  painter.drawText(QPointF(bar.left(), bar.top() - 5), text);
}

}  // namespace jqscope
