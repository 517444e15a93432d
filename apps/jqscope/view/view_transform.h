#ifndef JQSCOPE_VIEW_VIEW_TRANSFORM_H
#define JQSCOPE_VIEW_VIEW_TRANSFORM_H

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace jqscope {

/// How the mosaic lies in the view: pixels of the mosaic (from the first frame's corner)
/// to pixels of the screen.
class ViewTransform {
 public:
  static constexpr double kLeastScale = 1.0 / 4096, kMostScale = 16;

  /// Screen pixels for one pixel of the mosaic.
  double Scale() const { return m_scale; }
  void SetScreen(QSizeF screen) { m_screen = screen; }
  QSizeF Screen() const { return m_screen; }

  QPointF ToScreen(QPointF mosaic) const {
    return (mosaic - m_centre) * m_scale + QPointF(m_screen.width() / 2, m_screen.height() / 2);
  }
  QRectF ToScreen(const QRectF& r) const {
    return QRectF(ToScreen(r.topLeft()), r.size() * m_scale);
  }
  QPointF ToMosaic(QPointF screen) const {
    return (screen - QPointF(m_screen.width() / 2, m_screen.height() / 2)) / m_scale + m_centre;
  }
  /// What of the mosaic the view shows.
  QRectF Visible() const { return QRectF(ToMosaic(QPointF(0, 0)), m_screen / m_scale); }

  /// The point of the mosaic at `screen` stays where it is.
  void ZoomAt(QPointF screen, double factor);
  void SetScale(double scale);
  void PanBy(QPointF screen) { m_centre -= screen / m_scale; }
  void CentreOn(QPointF mosaic) { m_centre = mosaic; }
  /// Shows the whole rectangle, with a little room around.
  void Fit(const QRectF& mosaic);
  /// Moves as little as needed to keep the rectangle clear of the view's edges. A
  /// rectangle that does not fit is centred.
  /// @return whether the view moved
  bool Follow(const QRectF& mosaic);

 private:
  double m_scale = 1;
  QPointF m_centre;
  QSizeF m_screen{1, 1};
};

}  // namespace jqscope

#endif  // JQSCOPE_VIEW_VIEW_TRANSFORM_H
