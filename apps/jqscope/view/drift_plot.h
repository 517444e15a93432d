#ifndef JQSCOPE_VIEW_DRIFT_PLOT_H
#define JQSCOPE_VIEW_DRIFT_PLOT_H

#include <QWidget>

#include "work/run_report.h"

namespace jqscope {

/// The drift as a number and how it went.
class DriftPlot : public QWidget {
  Q_OBJECT

 public:
  explicit DriftPlot(QWidget* parent = nullptr);
  /// @param micrometres of a pixel; 0: not known
  void Show(const RunReport& report, double micrometres);
  QSize sizeHint() const override { return QSize(220, 56); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QVector<float> m_history;
  QString m_text;
};

}  // namespace jqscope

#endif  // JQSCOPE_VIEW_DRIFT_PLOT_H
