#ifndef JQSCOPE_VIEW_COACH_BAR_H
#define JQSCOPE_VIEW_COACH_BAR_H

#include <QWidget>

#include "words/guidance.h"

namespace jqscope {

/// Two gauges: how far the frame is from the one placed last, and how fast it moves.
/// The range that serves best is marked on each by colour, hatching and a word.
class CoachBar : public QWidget {
  Q_OBJECT

 public:
  explicit CoachBar(QWidget* parent = nullptr);
  void Show(const Coaching& coaching);
  QSize sizeHint() const override { return QSize(420, 44); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Coaching m_coaching;
};

}  // namespace jqscope

#endif  // JQSCOPE_VIEW_COACH_BAR_H
