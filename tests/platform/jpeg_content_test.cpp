// JPEG files with one thing out of the ordinary, right lengths throughout.
#include <algorithm>

#include "judged_file.h"
#include "support/pictures.h"

namespace {

constexpr int kFrame = 0xC0;
constexpr int kHuffman = 0xC4;
constexpr int kScan = 0xDA;
constexpr int kQuantisation = 0xDB;

// The parts of a file from the start mark to the compressed data; each with its mark
// and its length in front.
struct Jpeg {
  explicit Jpeg(const std::vector<int>& options = {}) {
    RandomSource random(4);
    FileBytes file;
    cv::imencode(".jpg", pictures::Noise(random, 17, 31, CV_8UC3), file, options);
    std::size_t at = 2;
    while (segments.empty() || segments.back()[1] != kScan) {
      const std::size_t length = 2U + static_cast<std::size_t>(file[at + 2] << 8 | file[at + 3]);
      segments.emplace_back(&file[at], &file[at] + length);
      at += length;
    }
    data.assign(file.begin() + static_cast<std::ptrdiff_t>(at), file.end());
  }

  FileBytes& Segment(int mark) {
    return *std::find_if(segments.begin(), segments.end(),
                         [mark](const FileBytes& segment) { return segment[1] == mark; });
  }
  void Drop(int mark) {
    segments.erase(std::remove_if(segments.begin(), segments.end(),
                                  [mark](const FileBytes& s) { return s[1] == mark; }),
                   segments.end());
  }
  void SetSides(int width, int height) {
    FileBytes& frame = Segment(kFrame);
    frame[5] = static_cast<uchar>(height >> 8);
    frame[6] = static_cast<uchar>(height);
    frame[7] = static_cast<uchar>(width >> 8);
    frame[8] = static_cast<uchar>(width);
  }
  FileBytes Bytes() const {
    FileBytes all = {0xFF, 0xD8};
    for (const FileBytes& segment : segments) all.insert(all.end(), segment.begin(), segment.end());
    all.insert(all.end(), data.begin(), data.end());
    return all;
  }

  std::vector<FileBytes> segments;
  FileBytes data;
};

using JpegContent = JudgedFile;

}  // namespace

TEST_F(JpegContent, SidesUpToTheDecodersLimit) {
  for (const int side : {1, 8, 65500, 65501, 65535, 0}) {
    SCOPED_TRACE(side);
    Jpeg wide, high;
    wide.SetSides(side, 17);
    high.SetSides(31, side);
    const bool isReadable = side >= 1 && side <= 65500;
    EXPECT_EQ(ExpectAsDecoded(wide.Bytes()), isReadable ? cv::Size(side, 17) : cv::Size());
    EXPECT_EQ(ExpectAsDecoded(high.Bytes()), isReadable ? cv::Size(31, side) : cv::Size());
  }
}

TEST_F(JpegContent, EveryFieldOfTheFrameHeader) {
  const std::size_t length = Jpeg().Segment(kFrame).size();
  for (std::size_t at = 4; at < length; ++at) {
    if (at >= 5 && at <= 8) continue;  // the sides
    for (const int value : {0, 1, 2, 4, 5, 8, 12, 16, 0x33, 0x44, 255}) {
      SCOPED_TRACE(testing::Message() << at << " is " << value);
      Jpeg jpeg;
      jpeg.Segment(kFrame)[at] = static_cast<uchar>(value);
      ExpectAsDecoded(jpeg.Bytes());
    }
  }
}

TEST_F(JpegContent, EveryFieldOfTheScanHeader) {
  const std::size_t length = Jpeg().Segment(kScan).size();
  for (std::size_t at = 4; at < length; ++at) {
    for (const int value : {0, 1, 2, 3, 0x11, 0x22, 0x44, 63, 64, 255}) {
      SCOPED_TRACE(testing::Message() << at << " is " << value);
      Jpeg jpeg;
      jpeg.Segment(kScan)[at] = static_cast<uchar>(value);
      ExpectAsDecoded(jpeg.Bytes());
    }
  }
}

TEST_F(JpegContent, KindsOfCoding) {
  for (int mark = 0xC0; mark <= 0xCF; ++mark) {
    SCOPED_TRACE(mark);
    Jpeg jpeg;
    jpeg.Segment(kFrame)[1] = static_cast<uchar>(mark);
    ExpectAsDecoded(jpeg.Bytes());
  }
  ExpectAsDecoded(Jpeg({cv::IMWRITE_JPEG_RST_INTERVAL, 1}).Bytes());
}

TEST_F(JpegContent, MissingAndDoubledParts) {
  for (const int mark : {kQuantisation, kHuffman, kFrame}) {
    SCOPED_TRACE(mark);
    Jpeg without, twice;
    without.Drop(mark);
    ExpectAsDecoded(without.Bytes());
    twice.segments.insert(twice.segments.begin(), FileBytes(twice.Segment(mark)));
    ExpectAsDecoded(twice.Bytes());
  }
  Jpeg restarts;
  restarts.segments.insert(restarts.segments.begin(), {0xFF, 0xDD, 0, 4, 0, 1});
  ExpectAsDecoded(restarts.Bytes());
}

TEST_F(JpegContent, DataCutOffOrMissing) {
  for (const std::size_t kept : {0U, 1U, 2U, 100U}) {
    SCOPED_TRACE(kept);
    Jpeg jpeg;
    jpeg.data.resize(kept);
    ExpectAsDecoded(jpeg.Bytes());
  }
  Jpeg empty;
  empty.data = {0xFF, 0xD9};
  ExpectAsDecoded(empty.Bytes());
}
