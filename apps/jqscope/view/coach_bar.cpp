#include "view/coach_bar.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace jqscope {
namespace {

const QColor kGood(0, 158, 115);
const QColor kBad(230, 159, 0);
// The end of the speed's scale, as a share of the frame per frame.
constexpr double kFastest = 0.1;

struct Gauge {
  QString name, text;
  double end = 1;           // of the scale
  double from = 0, to = 1;  // best range
  double value = 0;
  bool hasValue = true;
};

QString PerCentText(double share) {
  return QString::number(std::lround(100 * share)) + " %";
}

void DrawGauge(QPainter& painter, const QRect& area, const Gauge& gauge, const QPalette& palette) {
  const QFontMetrics metrics(painter.font());
  const int height = metrics.height();
  painter.setPen(palette.color(QPalette::WindowText));
  painter.drawText(QRect(area.left(), area.top(), area.width(), height), Qt::AlignLeft, gauge.name);
  painter.drawText(QRect(area.left(), area.top(), area.width(), height), Qt::AlignRight,
                   gauge.text);
  const QRect bar(area.left(), area.top() + height + 2, area.width(), area.height() - height - 4);
  const auto place = [&](double value) {
    return bar.left() + static_cast<int>(std::lround(std::clamp(value / gauge.end, 0.0, 1.0) *
                                                     (bar.width() - 1)));
  };
  painter.fillRect(bar, palette.color(QPalette::Base));
  const QRect best(QPoint(place(gauge.from), bar.top()), QPoint(place(gauge.to), bar.bottom()));
  QColor ground = kGood;
  ground.setAlpha(70);
  painter.fillRect(best, ground);
  painter.fillRect(best, QBrush(kGood, Qt::BDiagPattern));
  painter.setPen(palette.color(QPalette::Mid));
  painter.drawRect(bar.adjusted(0, 0, -1, -1));
  if (!gauge.hasValue) return;
  const int at = place(gauge.value);
  const bool good = gauge.value >= gauge.from && gauge.value <= gauge.to;
  const QRect needle(at - 3, bar.top() - 2, 7, bar.height() + 4);
  painter.fillRect(needle, palette.color(QPalette::WindowText));
  painter.fillRect(needle.adjusted(2, 2, -2, -2), good ? kGood : kBad);
}

}  // namespace

CoachBar::CoachBar(QWidget* parent) : QWidget(parent) {
  setAccessibleName(tr("Shift and speed"));
  setToolTip(
      tr("Left: how far the frame is from the one placed last. Right: how fast it moves, from one "
         "frame to the next. The hatched ranges serve best."));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void CoachBar::Show(const Coaching& coaching) {
  m_coaching = coaching;
  setAccessibleDescription(tr("Shift %1, speed %2 per frame")
                               .arg(PerCentText(coaching.shift), PerCentText(coaching.speed)));
  update();
}

void CoachBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect area = rect().adjusted(10, 2, -10, -2);
  const int half = area.width() / 2 - 12;
  const Coaching& c = m_coaching;
  Gauge shift{tr("Shift"),
              c.hasShift ? tr("%1 (placed from %2 to %3)")
                               .arg(PerCentText(c.shift), PerCentText(c.least), PerCentText(c.most))
                         : tr("not measured"),
              c.most + c.least,
              c.least,
              c.most,
              c.shift,
              c.hasShift};
  Gauge speed{
      tr("Speed"), tr("%1 a frame, best up to %2").arg(PerCentText(c.speed), PerCentText(c.bestTo)),
      kFastest,    c.bestFrom,
      c.bestTo,    c.speed,
      true};
  DrawGauge(painter, QRect(area.left(), area.top(), half, area.height()), shift, palette());
  DrawGauge(painter, QRect(area.right() - half, area.top(), half, area.height()), speed, palette());
}

}  // namespace jqscope
