#include "window/theme.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

namespace jqscope {
namespace {

struct Colours {
  QColor window, base, text, button, highlight, middle, dimmed;
};

QPalette MakePalette(const Colours& c) {
  QPalette p(c.button, c.window);
  p.setColor(QPalette::Window, c.window);
  p.setColor(QPalette::Base, c.base);
  p.setColor(QPalette::AlternateBase, c.window);
  p.setColor(QPalette::Button, c.button);
  p.setColor(QPalette::Mid, c.middle);
  p.setColor(QPalette::Highlight, c.highlight);
  p.setColor(QPalette::HighlightedText, Qt::white);
  p.setColor(QPalette::Link, c.highlight);
  p.setColor(QPalette::ToolTipBase, c.base);
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                         QPalette::ToolTipText, QPalette::BrightText}) {
    p.setColor(role, c.text);
    p.setColor(QPalette::Disabled, role, c.dimmed);
  }
  return p;
}

}  // namespace

void ApplyTheme(Theme theme) {
  static const QPalette system = QApplication::palette();
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  switch (theme) {
    case Theme::kSystem:
      QApplication::setPalette(system);
      break;
    case Theme::kLight:
      QApplication::setPalette(
          MakePalette({QColor(240, 240, 240), Qt::white, QColor(20, 20, 20), QColor(232, 232, 232),
                       QColor(25, 110, 190), QColor(160, 160, 160), QColor(130, 130, 130)}));
      break;
    case Theme::kDark:
      QApplication::setPalette(MakePalette(
          {QColor(48, 50, 54), QColor(32, 34, 37), QColor(235, 235, 235), QColor(62, 65, 70),
           QColor(60, 140, 220), QColor(100, 104, 110), QColor(140, 140, 140)}));
      break;
  }
}

}  // namespace jqscope
