#include "view/view_transform.h"

#include <algorithm>

namespace jqscope {
namespace {

constexpr double kRoomAround = 1.06;
// Share of the view at each edge that a followed frame keeps clear of.
constexpr double kMargin = 0.08;

// How far [low, high] must move to lie in [from, to].
double Correction(double low, double high, double from, double to) {
  if (high - low > to - from) return (from + to) / 2 - (low + high) / 2;
  if (low < from) return from - low;
  return high > to ? to - high : 0.0;
}

}  // namespace

void ViewTransform::ZoomAt(QPointF screen, double factor) {
  const QPointF held = ToMosaic(screen);
  SetScale(m_scale * factor);
  m_centre += held - ToMosaic(screen);
}

void ViewTransform::SetScale(double scale) {
  m_scale = std::clamp(scale, kLeastScale, kMostScale);
}

void ViewTransform::Fit(const QRectF& mosaic) {
  if (mosaic.isEmpty()) return;
  m_centre = mosaic.center();
  SetScale(std::min(m_screen.width() / mosaic.width(), m_screen.height() / mosaic.height()) /
           kRoomAround);
}

bool ViewTransform::Follow(const QRectF& mosaic) {
  const QRectF r = ToScreen(mosaic);
  const double mx = kMargin * m_screen.width(), my = kMargin * m_screen.height();
  const QPointF by(Correction(r.left(), r.right(), mx, m_screen.width() - mx),
                   Correction(r.top(), r.bottom(), my, m_screen.height() - my));
  if (std::abs(by.x()) < 1 && std::abs(by.y()) < 1) return false;
  PanBy(by);
  return true;
}

}  // namespace jqscope
