#ifndef JQSCOPE_VIEW_MINIMAP_H
#define JQSCOPE_VIEW_MINIMAP_H

#include <QTransform>
#include <QWidget>

#include "view/tile_pyramid.h"
#include "work/run_report.h"

namespace jqscope {

/// The whole run in small: what is covered, the path, the frame under the camera, and what
/// the large view shows. A click brings the large view there.
class Minimap : public QWidget {
  Q_OBJECT

 public:
  /// @param tiles must outlive the map
  explicit Minimap(TilePyramid& tiles, QWidget* parent = nullptr);
  void Show(const RunReport& report);
  void ShowView(const QRectF& visible);
  QSize sizeHint() const override { return QSize(240, 180); }

 Q_SIGNALS:
  void clicked(QPointF mosaic);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  QRectF World() const;
  QTransform ToMap() const;

  TilePyramid& m_tiles;
  RunReport m_report;
  QRectF m_visible;
};

}  // namespace jqscope

#endif  // JQSCOPE_VIEW_MINIMAP_H
