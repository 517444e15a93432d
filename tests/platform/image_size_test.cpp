#include <gtest/gtest.h>
#include <sys/stat.h>

#include "judged_file.h"
#include "support/pictures.h"
#include "support/random_source.h"

namespace {

using Bytes = FileBytes;
using ImageSize = JudgedFile;

cv::Mat Picture(int width, int height, int type = CV_8UC3) {
  RandomSource random(4);
  return pictures::Noise(random, height, width, type);
}

Bytes Encoded(const char* extension, const cv::Mat& picture, const std::vector<int>& options = {}) {
  Bytes bytes;
  cv::imencode(extension, picture, bytes, options);
  return bytes;
}

Bytes WithInserted(Bytes bytes, std::size_t at, const Bytes& more) {
  bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(at), more.begin(), more.end());
  return bytes;
}

// An APP1 segment with one tag in the first directory.
Bytes ExifSegment(int orientation, bool littleEndian, int tag = 0x0112, int type = 3,
                  int count = 1) {
  Bytes tiff;
  const auto put16 = [&](int v) {
    tiff.push_back(static_cast<uchar>(littleEndian ? v : v >> 8));
    tiff.push_back(static_cast<uchar>(littleEndian ? v >> 8 : v));
  };
  const auto put32 = [&](int v) {
    if (littleEndian) {
      put16(v & 0xFFFF);
      put16(v >> 16);
    } else {
      put16(v >> 16);
      put16(v & 0xFFFF);
    }
  };
  tiff.assign(2, littleEndian ? 'I' : 'M');
  put16(42);
  put32(8);
  put16(1);
  put16(tag);
  put16(type);
  put32(count);
  put16(orientation);
  put16(0);
  put32(0);
  Bytes segment = {0xFF, 0xE1, 0, static_cast<uchar>(2 + 6 + tiff.size())};
  for (const char c : {'E', 'x', 'i', 'f', '\0', '\0'}) segment.push_back(static_cast<uchar>(c));
  segment.insert(segment.end(), tiff.begin(), tiff.end());
  return segment;
}

}  // namespace

TEST_F(ImageSize, EmptyListIsFalse) {
  EXPECT_FALSE(IsImageSizeMatched({}));
}

TEST_F(ImageSize, OneReadableFileIsTrue) {
  EXPECT_TRUE(IsImageSizeMatched({Known(5, 4)}));
}

TEST_F(ImageSize, EqualAndUnequalSizes) {
  EXPECT_TRUE(IsImageSizeMatched({Known(5, 4), Known(5, 4), Known(5, 4)}));
  EXPECT_FALSE(IsImageSizeMatched({Known(5, 4), Known(4, 5)}));
  EXPECT_FALSE(IsImageSizeMatched({Known(5, 4), Known(5, 4), Known(5, 3)}));
  EXPECT_FALSE(IsImageSizeMatched({Known(6, 4), Known(5, 4), Known(5, 4)}));
}

TEST_F(ImageSize, EveryFormatIsRead) {
  for (const char* extension : {".png", ".jpg", ".bmp", ".tiff", ".ppm", ".webp"}) {
    const QString path = Write(QString("a") + extension, Encoded(extension, Picture(37, 23)));
    EXPECT_TRUE(Matches(path, 37, 23)) << extension;
    EXPECT_FALSE(Matches(path, 23, 37)) << extension;
  }
}

TEST_F(ImageSize, TheContentCountsAndNotTheName) {
  EXPECT_TRUE(Matches(Write("a.png", Encoded(".jpg", Picture(37, 23))), 37, 23));
  EXPECT_TRUE(Matches(Write("b", Encoded(".png", Picture(37, 23))), 37, 23));
}

TEST_F(ImageSize, UnreadableFilesAreFalse) {
  EXPECT_FALSE(IsImageSizeMatched({m_folder.filePath("missing.png")}));
  EXPECT_FALSE(IsImageSizeMatched({QString()}));
  EXPECT_FALSE(IsImageSizeMatched({m_folder.path()}));
  EXPECT_FALSE(IsImageSizeMatched({Write("empty.png", {})}));
  EXPECT_FALSE(IsImageSizeMatched({Write("text.png", {'h', 'e', 'l', 'l', 'o'})}));
  EXPECT_FALSE(IsImageSizeMatched({Known(5, 4), m_folder.filePath("missing.png")}));
}

// A pipe would be emptied by the check, and opening one waits for a writer.
TEST_F(ImageSize, PipeIsFalseAndNotOpened) {
  const QString path = m_folder.filePath("pipe");
  ASSERT_EQ(mkfifo(path.toStdString().c_str(), 0600), 0);
  EXPECT_FALSE(IsImageSizeMatched({path}));
}

TEST_F(ImageSize, NameEndsAtItsFirstZero) {
  EXPECT_TRUE(IsImageSizeMatched({Known(5, 4) + QChar(0) + "more"}));
}

TEST_F(ImageSize, NamesOutsideAscii) {
  EXPECT_TRUE(Matches(
      Write(QString::fromUtf8("na\xc3\xafve \xe2\x82\xac.png"), Encoded(".png", Picture(9, 8))), 9,
      8));
}

TEST_F(ImageSize, PngOfEveryKind) {
  for (const int type : {CV_8UC1, CV_8UC3, CV_8UC4, CV_16UC1, CV_16UC3}) {
    cv::Mat picture = Picture(31, 17, CV_MAKETYPE(CV_8U, CV_MAT_CN(type)));
    picture.convertTo(picture, CV_MAT_DEPTH(type));
    ExpectAsDecoded(Encoded(".png", picture));
  }
  ExpectAsDecoded(Encoded(".png", Picture(31, 17, CV_8UC1), {cv::IMWRITE_PNG_BILEVEL, 1}));
}

TEST_F(ImageSize, JpegOfEveryKind) {
  ExpectAsDecoded(Encoded(".jpg", Picture(31, 17, CV_8UC1)));
  ExpectAsDecoded(Encoded(".jpg", Picture(31, 17), {cv::IMWRITE_JPEG_PROGRESSIVE, 1}));
  ExpectAsDecoded(Encoded(".jpg", Picture(31, 17), {cv::IMWRITE_JPEG_OPTIMIZE, 1}));
  ExpectAsDecoded(Encoded(".jpg", Picture(31, 17), {cv::IMWRITE_JPEG_RST_INTERVAL, 1}));
  ExpectAsDecoded(Encoded(".jpg", Picture(31, 17), {cv::IMWRITE_JPEG_QUALITY, 3}));
}

TEST_F(ImageSize, JpegOrientationIsThatOfADecodedPicture) {
  const Bytes plain = Encoded(".jpg", Picture(31, 17));
  for (const bool littleEndian : {true, false}) {
    for (int orientation = 0; orientation <= 9; ++orientation) {
      SCOPED_TRACE(orientation);
      const Bytes turned = WithInserted(plain, 2, ExifSegment(orientation, littleEndian));
      const QString path = Write("turned.jpg", turned);
      const bool swaps = orientation >= 5 && orientation <= 8;
      EXPECT_TRUE(Matches(path, swaps ? 17 : 31, swaps ? 31 : 17));
      ExpectAsDecoded(turned);
    }
  }
}

TEST_F(ImageSize, OddTagBlocksAreJudgedByDecoding) {
  const Bytes plain = Encoded(".jpg", Picture(31, 17));
  ExpectAsDecoded(WithInserted(plain, 2, ExifSegment(6, true, 0x0112, 4, 1)));
  ExpectAsDecoded(WithInserted(plain, 2, ExifSegment(6, true, 0x0112, 3, 2)));
  ExpectAsDecoded(WithInserted(plain, 2, ExifSegment(6, true, 0x0110)));
  // Two blocks, of which the first counts to some readers and the last to others.
  ExpectAsDecoded(
      WithInserted(WithInserted(plain, 2, ExifSegment(6, true)), 2, ExifSegment(1, true)));
  ExpectAsDecoded(
      WithInserted(WithInserted(plain, 2, ExifSegment(1, true)), 2, ExifSegment(6, true)));
  // A block without tags.
  ExpectAsDecoded(WithInserted(
      plain, 2, {0xFF, 0xE1, 0, 12, 'h', 't', 't', 'p', ':', '/', '/', 'n', 's', '.'}));
  ExpectAsDecoded(WithInserted(plain, 2, {0xFF, 0xE1, 0, 2}));
  // Cut off within the directory.
  Bytes cut = ExifSegment(6, false);
  cut.resize(cut.size() - 8);
  cut[3] = static_cast<uchar>(cut.size() - 2);
  ExpectAsDecoded(WithInserted(plain, 2, cut));
}

TEST_F(ImageSize, FillBytesAndCommentsInAJpeg) {
  const Bytes plain = Encoded(".jpg", Picture(31, 17));
  ExpectAsDecoded(WithInserted(plain, 2, {0xFF, 0xFF}));
  ExpectAsDecoded(WithInserted(plain, 2, {0xFF, 0xFE, 0, 5, 'a', 'b', 'c'}));
  Bytes trailing = plain;
  trailing.insert(trailing.end(), {1, 2, 3});
  ExpectAsDecoded(trailing);
}

// Whatever is cut off or overwritten, a file never passes that decoding turns down,
// nor with another size.
TEST_F(ImageSize, DamagedPngFilesAreJudgedAsDecoded) {
  const std::uint64_t seed = TestSeed();
  std::printf("seed %llu\n", static_cast<unsigned long long>(seed));
  SCOPED_TRACE("repeat with JQ_TEST_SEED=" + std::to_string(seed));
  RandomSource random(seed);
  const Bytes plain = Encoded(".png", Picture(31, 17));
  for (int round = TestRounds(150); round > 0 && !HasFailure(); --round) {
    Bytes damaged = plain;
    const int last = static_cast<int>(damaged.size()) - 1;
    if (random.OneIn(2)) {
      // The mark at the end is the last 12 bytes: decoders do not look for it.
      damaged.resize(random.Int(0, last - 12));
    } else {
      damaged[random.Int(0, last - 12)] ^= static_cast<uchar>(random.Int(1, 255));
    }
    ExpectAsDecoded(damaged);
  }
}

TEST_F(ImageSize, DamagedJpegHeadersAreJudgedAsDecoded) {
  const std::uint64_t seed = TestSeed();
  std::printf("seed %llu\n", static_cast<unsigned long long>(seed));
  SCOPED_TRACE("repeat with JQ_TEST_SEED=" + std::to_string(seed));
  RandomSource random(seed);
  const Bytes plain = WithInserted(Encoded(".jpg", Picture(31, 17)), 2, ExifSegment(1, true));
  for (int round = TestRounds(150); round > 0 && !HasFailure(); --round) {
    Bytes damaged = plain;
    const int last = static_cast<int>(damaged.size()) - 1;
    if (random.OneIn(2)) {
      damaged.resize(random.Int(0, last));
    } else {
      damaged[random.Int(0, last)] ^= static_cast<uchar>(random.Int(1, 255));
    }
    ExpectAsDecoded(damaged);
  }
}

// The image library raises an error for these instead of giving no picture.
TEST_F(ImageSize, PictureBeyondTheImageLibrarysLimitsIsFalse) {
  Bytes huge = Encoded(".bmp", Picture(4, 4));
  huge[18 + 2] = 0x7F;  // the width's third byte: 8 million columns
  const QString path = Write("huge.bmp", huge);
  EXPECT_EQ(Ending([&] { EXPECT_FALSE(IsImageSizeMatched({path})); }), Outcome::kReturned);
}
