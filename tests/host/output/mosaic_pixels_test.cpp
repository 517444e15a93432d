// What is read block by block is what the functions for whole pictures make.
#include "host/output/mosaic_pixels.h"

#include <gtest/gtest.h>

#include "host/output/coverage.h"
#include "host/output/mosaic_scene.h"
#include "host/output/picture.h"

namespace jqhost_test {
namespace {

using Colour = std::optional<std::array<int, 3>>;

cv::Mat ReadInBlocks(const jqhost::PixelSource& source, cv::Size block) {
  cv::Mat whole(source.Size(), CV_8UC(source.Channels()), cv::Scalar::all(99));
  const cv::Rect all(cv::Point(), source.Size());
  for (int y = 0; y < all.height; y += block.height) {
    for (int x = 0; x < all.width; x += block.width) {
      const cv::Rect area = cv::Rect(cv::Point(x, y), block) & all;
      cv::Mat part = whole(area);
      source.Read(area, part);
    }
  }
  return whole;
}

// Grey samples are alike in the three channels of a frame.
cv::Mat GreyScene(cv::Size size, std::uint64_t seed) {
  cv::Mat one, three;
  cv::extractChannel(MosaicScene(size, seed), one, 0);
  cv::cvtColor(one, three, cv::COLOR_GRAY2BGR);
  return three;
}

TEST(MosaicPixels, BlocksEqualTheWholePicture) {
  const Colour colours[] = {Colour(), Colour({0, 0, 0}), Colour({255, 255, 255}),
                            Colour({10, 20, 30})};
  for (const Colour& colour : colours) {
    for (const bool grey : {false, true}) {
      const cv::Mat view = grey ? GreyScene({67, 45}, 7) : MosaicScene({67, 45}, 7);
      cv::Mat expected = jqhost::WithBackground(view, colour);
      if (grey) expected = jqhost::AsGrey(expected, colour);
      // A copy: it may be the view itself.
      cv::Mat rgb = expected.clone();
      if (rgb.channels() == 3) cv::cvtColor(expected, rgb, cv::COLOR_BGR2RGB);
      const jqhost::MosaicPixels pixels(view, colour, grey);
      EXPECT_EQ(Differences(ReadInBlocks(pixels, {16, 7}), rgb), 0)
          << grey << (colour ? (*colour)[0] : -1);
    }
  }
}

TEST(MosaicPixels, APatchCoversItsPlaceOnly) {
  const cv::Mat view = MosaicScene({67, 45}, 8);
  jqhost::MosaicPixels pixels(view, std::nullopt, false);
  cv::Mat expected = ReadInBlocks(pixels, {67, 45});
  const cv::Rect place(13, 9, 20, 11);
  expected(place).setTo(cv::Scalar(1, 2, 3));
  pixels.Cover(place, cv::Mat(place.size(), CV_8UC3, cv::Scalar(1, 2, 3)));
  EXPECT_EQ(Differences(ReadInBlocks(pixels, {16, 7}), expected), 0);
}

// Two frames of 4 x 3, the second partly outside the picture.
TEST(Coverage, IsTheFramesAndNothingElse) {
  const jqhost::CoveragePixels mask({7, 5}, {cv::Rect(1, 0, 4, 3), cv::Rect(4, 3, 4, 3)});
  const unsigned char f = 255;
  const cv::Mat expected = (cv::Mat_<unsigned char>(5, 7) <<  //
                                0,
                            f, f, f, f, 0, 0,     //
                            0, f, f, f, f, 0, 0,  //
                            0, f, f, f, f, 0, 0,  //
                            0, 0, 0, 0, f, f, f,  //
                            0, 0, 0, 0, f, f, f);
  EXPECT_EQ(Differences(ReadInBlocks(mask, {7, 5}), expected), 0);
  EXPECT_EQ(Differences(ReadInBlocks(mask, {3, 2}), expected), 0);
}

}  // namespace
}  // namespace jqhost_test
