#include "view/view_transform.h"

#include <gtest/gtest.h>

#include "view/overlay.h"

namespace jqscope {
namespace {

ViewTransform Transform() {
  ViewTransform transform;
  transform.SetScreen(QSizeF(800, 600));
  return transform;
}

void ExpectSame(QPointF a, QPointF b) {
  EXPECT_NEAR(a.x(), b.x(), 1e-6);
  EXPECT_NEAR(a.y(), b.y(), 1e-6);
}

TEST(ViewTransformTest, ZoomsAtThePointer) {
  ViewTransform transform = Transform();
  transform.CentreOn(QPointF(1000, -300));
  const QPointF held = transform.ToMosaic(QPointF(123, 456));
  for (const double factor : {1.25, 0.3, 4.0}) {
    transform.ZoomAt(QPointF(123, 456), factor);
    ExpectSame(transform.ToMosaic(QPointF(123, 456)), held);
  }
  for (int i = 0; i < 100; ++i) transform.ZoomAt(QPointF(123, 456), 0.5);
  EXPECT_DOUBLE_EQ(transform.Scale(), ViewTransform::kLeastScale);
  ExpectSame(transform.ToMosaic(QPointF(123, 456)), held);
}

TEST(ViewTransformTest, FitsTheWhole) {
  ViewTransform transform = Transform();
  const QRectF whole(-500, 100, 40000, 2000);
  transform.Fit(whole);
  EXPECT_TRUE(transform.Visible().contains(whole));
  EXPECT_GT(whole.width() / transform.Visible().width(), 0.9);
}

TEST(ViewTransformTest, FollowsAFrameByAsLittleAsNeeded) {
  ViewTransform transform = Transform();
  transform.CentreOn(QPointF(0, 0));
  EXPECT_FALSE(transform.Follow(QRectF(-50, -50, 100, 100)));
  EXPECT_TRUE(transform.Follow(QRectF(350, -50, 100, 100)));
  // The right edge of the frame, 450, lies 8 % of 800 inside of the view.
  EXPECT_NEAR(transform.ToScreen(QPointF(450, 0)).x(), 736, 1e-6);
  EXPECT_NEAR(transform.ToScreen(QPointF(450, 0)).y(), 300, 1e-6);
  // One that does not fit is centred.
  EXPECT_TRUE(transform.Follow(QRectF(0, 0, 4000, 100)));
  EXPECT_NEAR(transform.ToScreen(QPointF(2000, 0)).x(), 400, 1e-6);
}

TEST(ScaleBarTest, HasARoundLength) {
  EXPECT_DOUBLE_EQ(RoundLength(199), 100);
  EXPECT_DOUBLE_EQ(RoundLength(200), 200);
  EXPECT_DOUBLE_EQ(RoundLength(0.07), 0.05);
  EXPECT_EQ(LengthText(200), QString::fromUtf8("200 µm"));
  EXPECT_EQ(LengthText(2000), "2 mm");
  EXPECT_EQ(LengthText(0.5), "500 nm");
}

}  // namespace
}  // namespace jqscope
