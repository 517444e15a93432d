// PNG row by row: the pixels of the image library's own files, and the pixel size.
#include <array>
#include <fstream>
#include <iterator>

#include "host/output/picture.h"
#include "host/output/save_case.h"

namespace jqhost_test {
namespace {

class PngFile : public SaveCase {
 protected:
  // Horizontal and vertical pixels per unit, and the unit, of the pHYs chunk; the first
  // is -1 without one.
  std::array<long long, 3> PixelsPerUnit(const std::string& name) const {
    const std::string bytes = jqstitch_test::ReadFile(Path(name));
    const std::size_t at = bytes.find("pHYs");
    if (at == std::string::npos) return {-1, -1, -1};
    const auto number = [&](std::size_t from) {
      long long value = 0;
      for (std::size_t i = 0; i < 4; ++i) {
        value = value * 256 + static_cast<unsigned char>(bytes[from + i]);
      }
      return value;
    };
    return {number(at + 4), number(at + 8), static_cast<unsigned char>(bytes[at + 12])};
  }
};

TEST_F(PngFile, HoldsThePicture) {
  // Higher than the rows that are written at once.
  const cv::Mat view = MosaicScene({231, 167}, 3);
  jqhost::SaveOptions options = Options("a.png");
  Save(view, options);
  EXPECT_EQ(Differences(Read("a.png"), view), 0);
  EXPECT_EQ(PixelsPerUnit("a.png")[0], -1);

  options.background = {{255, 250, 10}};
  Save(view, options);
  EXPECT_EQ(Differences(Read("a.png"), jqhost::WithBackground(view, options.background)), 0);

  options.background.reset();
  options.grey = true;
  Save(view, options);
  cv::Mat channel;
  cv::extractChannel(view, channel, 0);
  cv::Mat black;
  cv::inRange(view, cv::Scalar::all(0), cv::Scalar::all(0), black);
  EXPECT_EQ(Differences(Read("a.png"), channel), 0);
}

// 1 m / 0.345 um = 2898550.7; 1 m / 0.1 nm does not fit into the chunk.
TEST_F(PngFile, TellsThePixelSize) {
  const cv::Mat view = MosaicScene({31, 17}, 4);
  jqhost::SaveOptions options = Options("a.png");
  options.pixelSize = cv::Size2d(0.345e-6, 0.69e-6);
  Save(view, options);
  EXPECT_EQ(PixelsPerUnit("a.png"), (std::array<long long, 3>{2898551, 1449275, 1}));
  EXPECT_EQ(Differences(Read("a.png"), view), 0);
  options.pixelSize = cv::Size2d(1e-10, 1e-10);
  Save(view, options);
  EXPECT_EQ(PixelsPerUnit("a.png")[0], -1);
}

TEST_F(PngFile, AScaleBarIsDrawnOnlyWhenAsked) {
  const cv::Mat view = MosaicScene({400, 300}, 5);
  jqhost::SaveOptions options = Options("a.png");
  options.pixelSize = cv::Size2d(1e-6, 1e-6);
  Save(view, options);
  EXPECT_EQ(Differences(Read("a.png"), view), 0);
  options.scaleBar = true;
  Save(view, options);
  cv::Mat drawn = Read("a.png");
  ASSERT_EQ(drawn.size(), view.size());
  EXPECT_GT(Differences(drawn, view), 500);
  // 400 um, a fifth is 80, so 50 um: 50 white pixels, and nothing outside the corner.
  cv::Mat white;
  cv::inRange(drawn, cv::Scalar::all(255), cv::Scalar::all(255), white);
  int longest = 0;
  for (int r = 0; r < white.rows; ++r) longest = std::max(longest, cv::countNonZero(white.row(r)));
  EXPECT_NEAR(longest, 50, 3);
  EXPECT_EQ(Differences(drawn(cv::Rect(0, 0, 300, 300)), view(cv::Rect(0, 0, 300, 300))), 0);
  EXPECT_EQ(Differences(drawn(cv::Rect(0, 0, 400, 260)), view(cv::Rect(0, 0, 400, 260))), 0);
}

}  // namespace
}  // namespace jqhost_test
