#ifndef JQSCOPE_VIEW_MOSAIC_VIEW_H
#define JQSCOPE_VIEW_MOSAIC_VIEW_H

#include <QColor>
#include <QWidget>
#include <optional>

#include "view/tile_pyramid.h"
#include "view/view_transform.h"
#include "work/run_report.h"

namespace jqscope {

/// The mosaic, the frame under the camera, and what helps to move it. Draws tiles that
/// others paint; never waits for them.
class MosaicView : public QWidget {
  Q_OBJECT

 public:
  /// @param tiles must outlive the view
  explicit MosaicView(TilePyramid& tiles, QWidget* parent = nullptr);

  /// Shows a newer state of the run.
  void Show(const RunReport& report);
  /// All tiles may have changed.
  void Refresh() { update(); }

  void Fit();
  void OneToOne();
  void ZoomBy(double factor);
  void PanBy(QPointF screen);
  void SetFollowing(bool follow);
  bool IsFollowing() const { return m_follow; }
  /// The colour where nothing is placed; none: the view's own ground.
  void SetBackground(const std::optional<QColor>& colour);
  /// Whether the placed frames alone will be saved; else the canvas around them is shown too.
  void SetTrimmed(bool trimmed);
  /// Micrometres of a pixel of the mosaic; 0: not known, no scale bar.
  void SetPixelSize(double micrometres);

  /// Part of the mosaic in view; screen pixels for one of the mosaic.
  QRectF Visible() const { return m_transform.Visible(); }
  double Scale() const { return m_transform.Scale(); }
  const ViewTransform& Transform() const { return m_transform; }
  void CentreOn(QPointF mosaic);
  /// The view as it is on the screen.
  QImage Grab();

 Q_SIGNALS:
  void viewChanged();
  void followingChanged(bool follow);
  /// Tiles are wanted that the pyramid has let go.
  void tilesWanted();
  /// A place of the mosaic was clicked with Ctrl held.
  void placePicked(QPoint mosaic);
  /// The newest frame is on the screen. @param seconds since the source gave it
  void shown(double seconds);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  void DrawTiles(QPainter& painter, const QRect& clip);
  bool DrawTile(QPainter& painter, const TileKey& key, const QRect& target);
  QRect TileOnScreen(const TileKey& key) const;
  QRectF Content() const;
  QRectF Saved() const { return QRectF(m_trimmed ? m_report.bounds : m_report.canvas); }
  void UserMoved();
  void Moved();

  TilePyramid& m_tiles;
  RunReport m_report;
  ViewTransform m_transform;
  bool m_fitting = true;  // the whole stays in view while it grows
  bool m_follow = true;   // else the frame under the camera does
  std::optional<QColor> m_background;
  bool m_trimmed = true;
  double m_pixelSize = 0;
  QPoint m_dragFrom;
  bool m_dragging = false;
  bool m_unshown = false;
  bool m_everShown = false;
};

}  // namespace jqscope

#endif  // JQSCOPE_VIEW_MOSAIC_VIEW_H
