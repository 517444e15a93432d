#include "window/banner.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

namespace jqscope {
namespace {

constexpr int kChipWidth = 120;

}  // namespace

Banner::Banner(QWidget* parent) : QFrame(parent), m_sentence(new QLabel) {
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(kChipWidth + 16, 8, 12, 8);
  layout->addWidget(m_sentence);
  QFont font = m_sentence->font();
  font.setPointSizeF(font.pointSizeF() * 1.6);
  font.setBold(true);
  m_sentence->setFont(font);
  m_sentence->setWordWrap(true);
  m_sentence->setMinimumHeight(QFontMetrics(font).height());
  m_sentence->setAccessibleName(tr("What to do now"));
}

void Banner::Show(const LiveStyle& style, const QString& sentence) {
  if (style.word != m_style.word || style.colour != m_style.colour) {
    m_style = style;
    update();
  }
  if (sentence == m_sentence->text()) return;
  m_sentence->setText(sentence);
  m_sentence->setAccessibleDescription(sentence);
}

QString Banner::Sentence() const {
  return m_sentence->text();
}

void Banner::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect chip(0, 0, kChipWidth, height());
  painter.fillRect(chip, m_style.colour);
  painter.setPen(QPen(Qt::white, 3, m_style.line));
  painter.drawRect(chip.adjusted(6, 6, -7, -7));
  QFont font = painter.font();
  font.setBold(true);
  painter.setFont(font);
  painter.drawText(chip.adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap, m_style.word);
}

}  // namespace jqscope
