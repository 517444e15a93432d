#include "window/icons.h"

#include <QHash>
#include <QPainter>
#include <QPainterPath>

namespace jqscope {
namespace {

// Drawings on a field of 24 by 24. Letters as in a path of vector graphics: M and L take
// a point, R a rectangle (x, y, width, height), O an ellipse likewise, A an arc (the
// ellipse's rectangle, start angle, sweep in degrees), Z closes; F before a part fills it.
const QHash<QString, const char*>& Drawings() {
  static const QHash<QString, const char*> drawings = {
      {"start", "F M 7 4 L 20 12 L 7 20 Z"},
      {"pause", "F R 6 4 4 16 F R 14 4 4 16"},
      {"stop", "F R 5 5 14 14"},
      {"new", "R 4 4 16 16 M 12 8 L 12 16 M 8 12 L 16 12"},
      {"undo", "A 6 7 13 12 -70 250 M 3 9 L 7 13 L 11 8"},
      {"save", "R 4 4 16 16 R 8 4 8 6 R 7 14 10 6"},
      {"saveas", "R 4 4 16 16 R 8 4 8 6 M 9 17 L 15 17 M 12 14 L 12 20"},
      {"copy", "R 4 4 11 13 R 9 8 11 12"},
      {"fit",
       "M 4 9 L 4 4 L 9 4 M 15 4 L 20 4 L 20 9 M 20 15 L 20 20 L 15 20 M 9 20 L 4 20 L 4 15"},
      {"one", "M 6 8 L 9 5 L 9 19 M 15 8 L 18 5 L 18 19 F O 11 8 2 2 F O 11 15 2 2"},
      {"zoomin", "O 4 4 12 12 M 15 15 L 21 21 M 7 10 L 13 10 M 10 7 L 10 13"},
      {"zoomout", "O 4 4 12 12 M 15 15 L 21 21 M 7 10 L 13 10"},
      {"follow", "O 6 6 12 12 M 12 2 L 12 8 M 12 16 L 12 22 M 2 12 L 8 12 M 16 12 L 22 12"},
      {"camera", "R 3 7 18 13 O 8 9 8 8 M 8 7 L 10 4 L 14 4 L 16 7"},
      {"hold", "R 5 11 14 9 A 8 4 8 12 0 180 F O 11 14 2 3"},
      {"recorded", "R 5 3 14 18 M 8 8 L 16 8 M 8 12 L 16 12 M 8 16 L 13 16"},
      {"folder", "M 3 6 L 9 6 L 11 8 L 21 8 L 21 19 L 3 19 Z"},
      {"watch", "M 3 6 L 9 6 L 11 8 L 21 8 L 21 19 L 3 19 Z O 8 10 8 7 F O 11 12 3 3"},
      {"video", "R 3 6 12 12 M 15 11 L 21 7 L 21 17 L 15 13"},
      {"scope", "M 9 3 L 13 3 L 13 13 L 9 13 Z M 6 20 L 18 20 M 7 16 L 14 16 A 6 6 12 14 -80 150"},
      {"settings",
       "M 4 7 L 20 7 M 4 12 L 20 12 M 4 17 L 20 17 F O 7 5 4 4 F O 14 10 4 4 F O 9 15 4 4"},
      {"help", "O 3 3 18 18 A 9 7 6 6 -60 220 M 12 13 L 12 15 F O 11 17 2 2"},
      {"about", "O 3 3 18 18 M 12 11 L 12 17 F O 11 7 2 2"},
      {"quit", "M 6 6 L 18 18 M 18 6 L 6 18"},
      {"left", "M 14 5 L 7 12 L 14 19"},
      {"right", "M 10 5 L 17 12 L 10 19"},
      {"up", "M 5 14 L 12 7 L 19 14"},
      {"down", "M 5 10 L 12 17 L 19 10"},
      {"find", "O 4 4 12 12 M 15 15 L 21 21 F O 8 8 4 4"},
      {"batch", "R 3 3 8 8 R 13 3 8 8 R 3 13 8 8 R 13 13 8 8"},
      {"cancel", "O 3 3 18 18 M 6 18 L 18 6"},
      {"theme", "O 4 4 16 16 F A 4 4 16 16 90 180"},
      {"trim", "M 7 2 L 7 17 L 22 17 M 2 7 L 17 7 L 17 22"},
      {"colour", "O 4 4 16 16 F O 7 8 3 3 F O 13 7 3 3 F O 14 13 3 3"},
  };
  return drawings;
}

void Draw(QPainter& painter, const char* drawing, const QColor& colour) {
  QPainterPath path;
  bool fill = false;
  const auto finish = [&] {
    if (path.isEmpty()) return;
    painter.setPen(QPen(colour, fill ? 0.5 : 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(fill ? QBrush(colour) : QBrush(Qt::NoBrush));
    painter.drawPath(path);
    path = QPainterPath();
  };
  const QStringList words = QString(drawing).split(' ');
  const auto number = [&](int i) { return words.value(i).toDouble(); };
  for (int i = 0; i < words.size();) {
    const QString& word = words[i];
    if (word == "F") {
      finish();
      fill = true;
      i += 1;
      continue;
    }
    if (word == "Z") {
      path.closeSubpath();
      i += 1;
      continue;
    }
    const QPointF at(number(i + 1), number(i + 2));
    const QRectF box(at, QSizeF(number(i + 3), number(i + 4)));
    if (word == "M") {
      if (fill && !path.isEmpty()) {
        finish();
        fill = false;
      }
      path.moveTo(at);
      i += 3;
    } else if (word == "L") {
      path.lineTo(at);
      i += 3;
    } else if (word == "R") {
      path.addRect(box);
      i += 5;
    } else if (word == "O") {
      path.addEllipse(box);
      i += 5;
    } else {
      path.arcMoveTo(box, number(i + 5));
      path.arcTo(box, number(i + 5), number(i + 6));
      i += 7;
    }
  }
  finish();
}

}  // namespace

QIcon DrawIcon(const QString& name, const QColor& colour) {
  const char* drawing = Drawings().value(name, nullptr);
  QIcon icon;
  if (drawing == nullptr) return icon;
  for (const int side : {16, 24, 32, 48, 96}) {
    for (const bool enabled : {true, false}) {
      QPixmap pixmap(side, side);
      pixmap.fill(Qt::transparent);
      QPainter painter(&pixmap);
      painter.setRenderHint(QPainter::Antialiasing);
      painter.scale(side / 24.0, side / 24.0);
      if (!enabled) painter.setOpacity(0.35);
      Draw(painter, drawing, colour);
      painter.end();
      icon.addPixmap(pixmap, enabled ? QIcon::Normal : QIcon::Disabled);
    }
  }
  return icon;
}

QIcon ProgramIcon() {
  QIcon icon;
  for (const int side : {16, 32, 64, 128, 256}) {
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / 64.0, side / 64.0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(226, 178, 196));
    painter.drawRect(QRectF(6, 10, 30, 26));
    painter.setBrush(QColor(205, 140, 170));
    painter.drawRect(QRectF(24, 24, 30, 26));
    painter.setBrush(QColor(96, 58, 130));
    for (const QPointF& cell :
         {QPointF(14, 18), QPointF(26, 30), QPointF(44, 40), QPointF(34, 44)}) {
      painter.drawEllipse(cell, 3.5, 3.0);
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0, 158, 115), 4));
    painter.drawRect(QRectF(24, 24, 32, 28));
    painter.end();
    icon.addPixmap(pixmap);
  }
  return icon;
}

}  // namespace jqscope
