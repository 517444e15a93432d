// The size in a picture's header, for every format that tells it: written by the
// image library, and by hand where a header is known byte by byte.
#include <gtest/gtest.h>

#include <opencv2/imgcodecs.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "host/source/header_size.h"

namespace jqhost_test {
namespace {

std::optional<jqhost::HeaderSize> SizeOf(const std::string& bytes) {
  std::istringstream stream(bytes);
  return jqhost::ReadHeaderSize(stream);
}

// A text literal with its zero bytes.
template <std::size_t N>
std::string Bytes(const char (&text)[N]) {
  return std::string(text, N - 1);
}

TEST(HeaderSize, IsThatOfTheDecodedPicture) {
  const std::vector<std::string> extensions = {".png", ".jpg", ".tif", ".bmp",  ".ppm", ".pgm",
                                               ".pbm", ".pfm", ".ras", ".webp", ".jp2"};
  for (const std::string& extension : extensions) {
    for (const cv::Size size : {cv::Size(37, 45), cv::Size(300, 64), cv::Size(48, 517)}) {
      const bool grey = extension == ".pgm" || extension == ".pbm";
      cv::Mat picture(size, grey ? CV_8UC1 : CV_8UC3, cv::Scalar::all(90));
      if (extension == ".pfm") picture.convertTo(picture, CV_32F);
      std::vector<unsigned char> bytes;
      ASSERT_TRUE(cv::imencode(extension, picture, bytes)) << extension;
      const auto found = SizeOf(std::string(bytes.begin(), bytes.end()));
      ASSERT_TRUE(found.has_value()) << extension << " " << size;
      EXPECT_EQ(found->width, std::uint64_t(size.width)) << extension;
      EXPECT_EQ(found->height, std::uint64_t(size.height)) << extension;
    }
  }
}

TEST(HeaderSize, OfHeadersWrittenByHand) {
  struct Row {
    const char* what;
    std::string bytes;
    std::uint64_t width, height;
  };
  const Row rows[] = {
      {"PNG", Bytes("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\x7f\xff\xff\xff\0\0\1\0\x08\2\0\0\0"),
       0x7fffffff, 256},
      {"JPEG, the size behind other segments and a fill byte",
       Bytes("\xff\xd8\xff\xe0\0\4ab\xff\xff\xdb\0\3c\xff\xc2\0\x0b\x08\x12\x34\x56\x78\3"), 0x5678,
       0x1234},
      {"TIFF of big numbers first, short and long",
       Bytes("MM\0*\0\0\0\x08\0\2\1\0\0\3\0\0\0\1\x12\x34\0\0\1\1\0\4\0\0\0\1\0\1\0\0"), 0x1234,
       0x10000},
      {"BigTIFF",
       Bytes("II+\0\x08\0\0\0\x10\0\0\0\0\0\0\0\2\0\0\0\0\0\0\0"
             "\0\1\4\0\1\0\0\0\0\0\0\0\7\0\0\0\0\0\0\0"
             "\1\1\x10\0\1\0\0\0\0\0\0\0\x09\0\0\0\1\0\0\0"),
       7, 0x100000009},
      {"BMP from the top down",
       Bytes("BM\0\0\0\0\0\0\0\0\0\0\0\0\x28\0\0\0\5\0\0\0\xfd\xff\xff\xff"), 5, 3},
      {"WebP, extended", Bytes("RIFF\0\0\0\0WEBPVP8X\x0a\0\0\0\0\0\0\0\4\0\0\1\1\0"), 5, 258},
      {"PNM with comments", "P6 # 9 9\n# 8\n 12\t# more\n34\n255\n", 12, 34},
  };
  for (const Row& row : rows) {
    const auto found = SizeOf(row.bytes);
    ASSERT_TRUE(found.has_value()) << row.what;
    EXPECT_EQ(found->width, row.width) << row.what;
    EXPECT_EQ(found->height, row.height) << row.what;
  }
}

TEST(HeaderSize, NothingWhereTheHeaderDoesNotTell) {
  for (const std::string& bytes :
       {std::string(), std::string("P6"), std::string("P6 5"), std::string(64, 'x'),
        Bytes("\x89PNG\r\n\x1a\n\0\0"), Bytes("\xff\xd8\xff\xe0\0\4ab"),
        Bytes("\xff\xd8\xff\xe0\0\0"),  // a length of 0 leads nowhere new
        Bytes("II*\0\xff\xff\xff\xff"), Bytes("II+\0\x08\0\0\0\xff\xff\xff\xff\xff\xff\xff\xff"),
        Bytes("BM"), Bytes("RIFF\0\0\0\0WEBPVP8?")}) {
    EXPECT_FALSE(SizeOf(bytes).has_value());
  }
}

TEST(HeaderSize, PixelsDoNotOverflow) {
  EXPECT_EQ((jqhost::HeaderSize{std::uint64_t{1} << 40, std::uint64_t{1} << 40}).Pixels(),
            UINT64_MAX);
  EXPECT_EQ((jqhost::HeaderSize{100000, 100000}).Pixels(), 10000000000u);
}

}  // namespace
}  // namespace jqhost_test
