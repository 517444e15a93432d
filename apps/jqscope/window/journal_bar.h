#ifndef JQSCOPE_WINDOW_JOURNAL_BAR_H
#define JQSCOPE_WINDOW_JOURNAL_BAR_H

#include <QFrame>

#include "journal/journal_shelf.h"

class QLabel;
class QPushButton;

namespace jqscope {

/// Asks what to do with a run that a crash has left, or tells that a run is not recorded.
/// A line of the window, which goes on meanwhile; hidden while there is nothing to say.
class JournalBar : public QFrame {
  Q_OBJECT

 public:
  explicit JournalBar(QWidget* parent = nullptr);

  /// Asks; the answer comes as a signal. "Not now" hides the bar.
  void Offer(const LeftRun& left);
  void Tell(const QString& problem);
  const LeftRun& Offered() const { return m_left; }

 Q_SIGNALS:
  void takeUp();
  void throwAway();

 private:
  void Say(const QString& sentence, bool asks);

  LeftRun m_left;
  QLabel* m_sentence;
  QPushButton *m_takeUp, *m_close, *m_throwAway;
};

}  // namespace jqscope

#endif  // JQSCOPE_WINDOW_JOURNAL_BAR_H
