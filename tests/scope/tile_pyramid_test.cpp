#include "view/tile_pyramid.h"

#include <gtest/gtest.h>

#include <random>

#include "view/reduce_pixels.h"

namespace jqscope {
namespace {

constexpr int kSide = TilePyramid::kSide;

// Noise without pure black, which would count as empty.
cv::Mat Scene(cv::Size size, unsigned seed) {
  cv::Mat scene(size, CV_8UC3);
  std::mt19937 random(seed);
  for (int r = 0; r < scene.rows; ++r) {
    unsigned char* row = scene.ptr<unsigned char>(r);
    for (int c = 0; c < 3 * scene.cols; ++c)
      row[c] = static_cast<unsigned char>(1 + random() % 255);
  }
  return scene;
}

// A pixel of a level, the slow and plain way: rounded means of means, from the pixels.
// Channel 3 is the alpha.
int Plain(const cv::Mat& mosaic, cv::Point origin, int level, int x, int y, int channel) {
  if (level == 0) {
    const cv::Point at = origin + cv::Point(x, y);
    if (!cv::Rect(cv::Point(), mosaic.size()).contains(at)) return 0;
    const cv::Vec3b pixel = mosaic.at<cv::Vec3b>(at);
    return channel == 3 ? (pixel == cv::Vec3b() ? 0 : 255) : pixel[channel];
  }
  int sum = 2;
  for (const int dy : {0, 1}) {
    for (const int dx : {0, 1}) {
      sum += Plain(mosaic, origin, level - 1, 2 * x + dx, 2 * y + dy, channel);
    }
  }
  return sum / 4;
}

void ExpectPixel(TilePyramid& tiles, const cv::Mat& mosaic, cv::Point origin, int level, int x,
                 int y) {
  const auto floor = [](int a) { return a >= 0 ? a / kSide : -((-a + kSide - 1) / kSide); };
  const QImage tile = tiles.Tile({level, floor(x), floor(y)});
  ASSERT_FALSE(tile.isNull()) << "level " << level << " pixel " << x << ", " << y;
  const auto* row = reinterpret_cast<const QRgb*>(tile.constScanLine(y - floor(y) * kSide));
  const QRgb pixel = row[x - floor(x) * kSide];
  const int found[4] = {qBlue(pixel), qGreen(pixel), qRed(pixel), qAlpha(pixel)};
  for (int k = 0; k < 4; ++k) {
    ASSERT_EQ(found[k], Plain(mosaic, origin, level, x, y, k))
        << "level " << level << " pixel " << x << ", " << y << " channel " << k;
  }
}

TEST(TilePyramidTest, EveryLevelHasTheMeansOfThePixels) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  cv::Mat mosaic = Scene(cv::Size(900, 700), seed);
  mosaic(cv::Rect(300, 100, 77, 301)).setTo(0);
  const cv::Point origin(333, 211);  // so that most of it lies left of and above (0, 0)
  TilePyramid tiles;
  // In pieces that overlap, as frames do.
  for (int y = 0; y < 700; y += 170) {
    for (int x = 0; x < 900; x += 230) {
      tiles.Paint(
          mosaic, origin,
          cv::Rect(x - origin.x, y - origin.y, std::min(300, 900 - x), std::min(220, 700 - y)));
    }
  }
  for (int i = 0; i < 3000; ++i) {
    const int level = static_cast<int>(random() % 9);
    const int x = (static_cast<int>(random() % 900) - origin.x) >> level;
    const int y = (static_cast<int>(random() % 700) - origin.y) >> level;
    ExpectPixel(tiles, mosaic, origin, level, x, y);
    if (HasFatalFailure()) return;
  }
}

TEST(TilePyramidTest, TilesKeepTheirPlaceWhenTheMosaicGrowsToTheLeft) {
  const cv::Mat mosaic = Scene(cv::Size(600, 400), 5);
  TilePyramid tiles;
  tiles.Paint(mosaic, cv::Point(100, 50), cv::Rect(0, 0, 300, 200));
  cv::Mat larger(400, 800, CV_8UC3, cv::Scalar());
  mosaic.copyTo(larger(cv::Rect(200, 0, 600, 400)));
  tiles.Paint(larger, cv::Point(300, 50), cv::Rect(100, 50, 350, 220));
  for (const cv::Point at :
       {cv::Point(0, 0), cv::Point(99, 49), cv::Point(299, 199), cv::Point(449, 269)}) {
    ExpectPixel(tiles, larger, cv::Point(300, 50), 0, at.x, at.y);
    ExpectPixel(tiles, larger, cv::Point(300, 50), 2, at.x / 4, at.y / 4);
  }
}

TEST(TilePyramidTest, StaysWithinItsMemoryAndBringsBackWhatIsWanted) {
  const cv::Mat mosaic = Scene(cv::Size(4096, 4096), 7);
  const std::size_t most = 100 * 4 * kSide * kSide;  // a quarter of what all tiles take
  TilePyramid tiles(most);
  for (int y = 0; y < 4096; y += 512) {
    for (int x = 0; x < 4096; x += 512) {
      tiles.Paint(mosaic, cv::Point(), cv::Rect(x, y, 512, 512));
      ASSERT_LE(tiles.Bytes(), most);
    }
  }
  const TileKey first{0, 0, 0};
  EXPECT_TRUE(tiles.Tile(first).isNull());
  EXPECT_TRUE(tiles.IsLetGo(first));
  // The coarse levels stay, so that there is always something to show.
  for (int level = 3; level < TilePyramid::kLevels; ++level) {
    EXPECT_FALSE(tiles.Tile({level, 0, 0}).isNull()) << "level " << level;
  }
  // Painting over a tile that is not there must not leave half of one.
  tiles.Paint(mosaic, cv::Point(), cv::Rect(10, 10, 20, 20));
  EXPECT_TRUE(tiles.Tile(first).isNull());
  tiles.Want({first, {1, 0, 0}});
  EXPECT_TRUE(tiles.PaintWanted(mosaic, cv::Point()));
  EXPECT_FALSE(tiles.PaintWanted(mosaic, cv::Point()));
  ASSERT_LE(tiles.Bytes(), most);
  ExpectPixel(tiles, mosaic, cv::Point(), 0, 255, 255);
  ExpectPixel(tiles, mosaic, cv::Point(), 1, 255, 255);
}

// A whole mosaic at once, as after a crash or of a batch: in blocks, also across their edges,
// and wider than a picture of the toolkit can be.
TEST(TilePyramidTest, TakesOverAMosaicThatIsLargerThanABlock) {
  const cv::Mat pattern = Scene(cv::Size(997, 70), 11);
  cv::Mat mosaic(70, 34000, CV_8UC3);
  for (int x = 0; x < mosaic.cols; x += pattern.cols) {
    const int columns = std::min(pattern.cols, mosaic.cols - x);
    pattern.colRange(0, columns).copyTo(mosaic.colRange(x, x + columns));
  }
  const cv::Point origin(5001, 13);
  TilePyramid tiles;
  tiles.Paint(mosaic, origin, cv::Rect(-origin, mosaic.size()));
  for (const int x : {-5001, -905, -904, 3190, 3191, 3192, 28997, 28998}) {
    for (int level = 0; level < 9; ++level) {
      ExpectPixel(tiles, mosaic, origin, level, x >> level, 20 >> level);
      if (HasFatalFailure()) return;
    }
  }
}

TEST(ReducePixelsTest, EmptyGroundDoesNotMixIntoTheEdge) {
  cv::Mat edge(2, 2, CV_8UC3, cv::Scalar());
  edge.at<cv::Vec3b>(0, 0) = cv::Vec3b(200, 100, 40);
  const QImage half = HalvePixels(ToTilePixels(edge));
  const QRgb pixel = *reinterpret_cast<const QRgb*>(half.constScanLine(0));
  // A quarter of the pixel is covered: (255 + 2) / 4 = 64, and the colours as premultiplied.
  EXPECT_EQ(qAlpha(pixel), 64);
  EXPECT_EQ(qBlue(pixel), 50);
  EXPECT_EQ(qGreen(pixel), 25);
  EXPECT_EQ(qRed(pixel), 10);
}

}  // namespace
}  // namespace jqscope
