// Which files are judged by their headers alone: the plain ones, or every file of a
// run would be decoded twice.

#include "image_header.h"

#include <gtest/gtest.h>

#include <memory>
#include <opencv2/imgcodecs.hpp>

#include "support/pictures.h"

namespace {

cv::Size SizeOf(cv::Size (*reader)(std::FILE*), std::vector<uchar> bytes) {
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  const std::unique_ptr<std::FILE, Close> file(fmemopen(bytes.data(), bytes.size(), "rb"));
  return reader(file.get());
}

std::vector<uchar> Encoded(const char* extension, int type, const std::vector<int>& options = {}) {
  RandomSource random(4);
  std::vector<uchar> bytes;
  cv::imencode(extension, pictures::Noise(random, 17, 31, type), bytes, options);
  return bytes;
}

const cv::Size kSize(31, 17);
const cv::Size kNotSure;

}  // namespace

TEST(ImageHeader, PlainPngIsSure) {
  for (const int type : {CV_8UC1, CV_8UC3, CV_8UC4})
    EXPECT_EQ(SizeOf(jqheader::pngSize, Encoded(".png", type)), kSize);
}

TEST(ImageHeader, PngIsNotSureOfAnyDamage) {
  const std::vector<uchar> plain = Encoded(".png", CV_8UC3);
  for (std::size_t at = 0; at < plain.size(); ++at) {
    std::vector<uchar> damaged = plain;
    damaged[at] ^= 4;
    EXPECT_EQ(SizeOf(jqheader::pngSize, damaged), kNotSure) << at;
    damaged.resize(at + 1);
    EXPECT_EQ(SizeOf(jqheader::pngSize, damaged), kNotSure) << at;
  }
}

TEST(ImageHeader, PlainJpegIsSure) {
  EXPECT_EQ(SizeOf(jqheader::jpegSize, Encoded(".jpg", CV_8UC1)), kSize);
  EXPECT_EQ(SizeOf(jqheader::jpegSize, Encoded(".jpg", CV_8UC3)), kSize);
  EXPECT_EQ(
      SizeOf(jqheader::jpegSize, Encoded(".jpg", CV_8UC3, {cv::IMWRITE_JPEG_RST_INTERVAL, 1})),
      kSize);
  EXPECT_EQ(SizeOf(jqheader::jpegSize, Encoded(".jpg", CV_8UC3, {cv::IMWRITE_JPEG_OPTIMIZE, 1})),
            kSize);
}

TEST(ImageHeader, ProgressiveAndCutOffJpegIsNotSure) {
  EXPECT_EQ(SizeOf(jqheader::jpegSize, Encoded(".jpg", CV_8UC3, {cv::IMWRITE_JPEG_PROGRESSIVE, 1})),
            kNotSure);
  const std::vector<uchar> plain = Encoded(".jpg", CV_8UC3);
  for (std::size_t size = 1; size < plain.size(); ++size) {
    EXPECT_EQ(SizeOf(jqheader::jpegSize, {plain.begin(), plain.begin() + static_cast<int>(size)}),
              kNotSure)
        << size;
  }
}
