#include "view/drift_plot.h"

#include <QPainter>
#include <algorithm>

namespace jqscope {

DriftPlot::DriftPlot(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setAccessibleName(tr("Drift"));
  setToolTip(
      tr("Over ground that was placed before: how far the frame lies from where that ground has "
         "it. Nothing is changed by it."));
}

void DriftPlot::Show(const RunReport& report, double micrometres) {
  QString text = tr("Drift: not measured");
  if (!report.driftHistory.isEmpty()) {
    text = tr("Drift: %1 pixels").arg(report.drift, 0, 'f', 1);
    if (micrometres > 0) {
      text += tr(" (%1 µm)").arg(report.drift * report.detectLevel * micrometres, 0, 'f', 2);
    }
    if (!report.hasDrift) text += tr(", earlier");
  }
  if (text == m_text && report.driftHistory == m_history) return;
  m_text = text;
  m_history = report.driftHistory;
  setAccessibleDescription(text);
  update();
}

void DriftPlot::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const int text = QFontMetrics(font()).height();
  painter.setPen(palette().color(QPalette::WindowText));
  painter.drawText(rect(), Qt::AlignLeft | Qt::AlignTop, m_text);
  const QRect plot = rect().adjusted(0, text + 2, -1, -1);
  painter.fillRect(plot, palette().color(QPalette::Base));
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(plot);
  if (m_history.size() < 2) return;
  const float most = std::max(4.0F, *std::max_element(m_history.begin(), m_history.end()));
  QPolygonF line;
  for (int i = 0; i < m_history.size(); ++i) {
    line.append(QPointF(plot.left() + plot.width() * static_cast<double>(i) /
                                          static_cast<double>(m_history.size() - 1),
                        plot.bottom() - (plot.height() - 4) * static_cast<double>(m_history[i]) /
                                            static_cast<double>(most)));
  }
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(palette().color(QPalette::Highlight), 1.6));
  painter.drawPolyline(line);
}

}  // namespace jqscope
