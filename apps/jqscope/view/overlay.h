#ifndef JQSCOPE_VIEW_OVERLAY_H
#define JQSCOPE_VIEW_OVERLAY_H

#include <QPainter>

#include "view/view_transform.h"
#include "work/run_report.h"

namespace jqscope {

/// Screen pixels around `OverlayBounds` that lines and words may take.
constexpr int kOverlayMargin = 28;

/// What of the mosaic `DrawOverlay` draws over.
QRectF OverlayBounds(const RunReport& report);

/// The frame under the camera at its place, outlined and named; when it is lost, the
/// place to go back to and an arrow that points there.
void DrawOverlay(QPainter& painter, const RunReport& report, const ViewTransform& transform);

/// A bar of a round length in the lower left corner.
/// @param micrometres of one screen pixel
void DrawScaleBar(QPainter& painter, const QRect& view, double micrometres);

/// The longest length of 1, 2 or 5 times a power of ten that is at most `most`.
double RoundLength(double most);
/// "200 µm", "1 mm".
QString LengthText(double micrometres);

}  // namespace jqscope

#endif  // JQSCOPE_VIEW_OVERLAY_H
