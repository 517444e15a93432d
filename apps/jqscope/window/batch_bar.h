#ifndef JQSCOPE_WINDOW_BATCH_BAR_H
#define JQSCOPE_WINDOW_BATCH_BAR_H

#include <QFrame>

#include "work/run_report.h"

class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;

namespace jqscope {

/// How far a batch of files is, with a button that ends it; then the files that are not in
/// the picture, each with its reason. A part of the window, hidden while there is no batch.
class BatchBar : public QFrame {
  Q_OBJECT

 public:
  explicit BatchBar(QWidget* parent = nullptr);
  void Show(const RunReport& report);

 Q_SIGNALS:
  void cancelled();

 private:
  void Say(const QString& sentence);

  QProgressBar* m_progress;
  QPushButton *m_cancel, *m_close;
  QLabel* m_sentence;
  QListWidget* m_files;
  bool m_dismissed = false;
};

}  // namespace jqscope

#endif  // JQSCOPE_WINDOW_BATCH_BAR_H
