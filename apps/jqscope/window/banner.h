#ifndef JQSCOPE_WINDOW_BANNER_H
#define JQSCOPE_WINDOW_BANNER_H

#include <QFrame>

#include "words/live_state.h"

class QLabel;

namespace jqscope {

/// The one sentence that says what to do now, in large letters, beside the state in a word.
class Banner : public QFrame {
  Q_OBJECT

 public:
  explicit Banner(QWidget* parent = nullptr);
  void Show(const LiveStyle& style, const QString& sentence);
  QString Sentence() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QLabel* m_sentence;
  LiveStyle m_style;
};

}  // namespace jqscope

#endif  // JQSCOPE_WINDOW_BANNER_H
