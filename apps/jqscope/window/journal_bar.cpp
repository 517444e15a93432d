#include "window/journal_bar.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace jqscope {

JournalBar::JournalBar(QWidget* parent)
    : QFrame(parent),
      m_sentence(new QLabel),
      m_takeUp(new QPushButton(tr("&Take it up"))),
      m_close(new QPushButton),
      m_throwAway(new QPushButton(tr("Throw it &away"))) {
  setObjectName("journal");
  setFrameShape(QFrame::StyledPanel);
  setAccessibleName(tr("Journal of the run"));
  m_sentence->setWordWrap(true);
  m_sentence->setTextFormat(Qt::PlainText);
  m_takeUp->setObjectName("takeUp");
  m_takeUp->setToolTip(tr("Rebuild the picture from the journal and go on with the run"));
  m_close->setObjectName("notNow");
  m_throwAway->setObjectName("throwAway");
  m_throwAway->setToolTip(tr("Remove the journal; its picture cannot be made any more"));
  auto* row = new QHBoxLayout(this);
  row->addWidget(m_sentence, 1);
  for (QPushButton* button : {m_takeUp, m_close, m_throwAway}) {
    row->addWidget(button);
    connect(button, &QPushButton::clicked, this, &QWidget::hide);
  }
  connect(m_takeUp, &QPushButton::clicked, this, &JournalBar::takeUp);
  connect(m_throwAway, &QPushButton::clicked, this, &JournalBar::throwAway);
  hide();
}

void JournalBar::Offer(const LeftRun& left) {
  m_left = left;
  const QString began = QFileInfo(QString::fromLocal8Bit(left.folder.c_str())).fileName();
  QString sentence = tr("The run of %1 did not come to its end: %n placed frame(s) are there. "
                        "Take it up again?",
                        nullptr, left.frames)
                         .arg(began);
  if (left.damaged) sentence += " " + tr("What it recorded after them is damaged.");
  Say(sentence, true);
}

void JournalBar::Tell(const QString& problem) {
  Say(problem, false);
}

void JournalBar::Say(const QString& sentence, bool asks) {
  m_sentence->setText(sentence);
  setAccessibleDescription(sentence);
  m_takeUp->setVisible(asks);
  m_takeUp->setAccessibleDescription(sentence);
  m_throwAway->setVisible(asks);
  m_close->setText(asks ? tr("&Not now") : tr("C&lose"));
  show();
}

}  // namespace jqscope
