#ifndef JQSCOPE_VIEW_COUNTERS_H
#define JQSCOPE_VIEW_COUNTERS_H

#include <QLabel>

#include "work/run_report.h"

namespace jqscope {

/// The numbers of a run, as a small table.
class Counters : public QLabel {
  Q_OBJECT

 public:
  explicit Counters(QWidget* parent = nullptr);
  /// @param latency seconds from frame to screen; @param viewBytes held by the view
  void Show(const RunReport& report, double latency, std::size_t viewBytes);
};

}  // namespace jqscope

#endif  // JQSCOPE_VIEW_COUNTERS_H
