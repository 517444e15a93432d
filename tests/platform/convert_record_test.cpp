#include <gtest/gtest.h>

#include <ostream>

#include "jqimageconvert.h"
#include "reference/stitcher.h"
#include "support/compare.h"
#include "support/host_record.h"
#include "support/outcome.h"
#include "support/pictures.h"
#include "support/property_test.h"

namespace {

cv::Mat Convert(HostRecord& record) {
  cv::Mat out;
  ConvertJQImgToCv8UC3(record.get(), out);
  return out;
}

struct BadRow {
  const char* name;
  void (*spoil)(_tagJQIMG*);
  const char* field;  // both are in the text
  const char* value;
};

void PrintTo(const BadRow& row, std::ostream* out) {
  *out << row.name;
}

// Of a record of 5 x 4 pixels with 3 channels of 1 byte and no padding.
const BadRow kBadRows[] = {
    {"ZeroWidth", [](_tagJQIMG* r) { r->width = 0; }, "width", "0"},
    {"ZeroHeight", [](_tagJQIMG* r) { r->height = 0; }, "height", "0"},
    {"NullPixels", [](_tagJQIMG* r) { r->pixels = nullptr; }, "pixels", "null"},
    {"UnknownFormat", [](_tagJQIMG* r) { r->format = 7; }, "format", "7"},
    {"NoChannels", [](_tagJQIMG* r) { r->channels = 0; }, "channels", "0"},
    {"TwoChannels", [](_tagJQIMG* r) { r->channels = 2; }, "channels", "2"},
    {"FiveChannels", [](_tagJQIMG* r) { r->channels = 5; }, "channels", "5"},
    {"NoDepth", [](_tagJQIMG* r) { r->bytesPerChannel = 0; }, "bytesPerChannel", "0"},
    {"Depth", [](_tagJQIMG* r) { r->bytesPerChannel = 3; }, "bytesPerChannel", "3"},
    {"ShortLine", [](_tagJQIMG* r) { r->bytesPerLine = 14; }, "bytesPerLine", "14"},
    {"NegativeLine", [](_tagJQIMG* r) { r->bytesPerLine = -15; }, "bytesPerLine", "-15"},
    {"WiderThanItsLine", [](_tagJQIMG* r) { r->width = 6; }, "bytesPerLine", "15"},
    {"DeeperThanItsLine", [](_tagJQIMG* r) { r->bytesPerChannel = 2; }, "bytesPerLine", "15"},
    {"SmallBuffer", [](_tagJQIMG* r) { r->bufferSize = 59; }, "bufferSize", "59"},
    {"NoBuffer", [](_tagJQIMG* r) { r->bufferSize = 0; }, "bufferSize", "0"},
    {"TallerThanItsBuffer", [](_tagJQIMG* r) { r->height = 5; }, "bufferSize", "60"},
};

class BadRecord : public ::testing::TestWithParam<BadRow> {};

class ConvertProperty : public PropertyTest {};

}  // namespace

TEST(ConvertRecord, ColourIsCopied) {
  const cv::Mat frame = (cv::Mat_<cv::Vec3b>(2, 2) << cv::Vec3b(1, 2, 3), cv::Vec3b(4, 5, 6),
                         cv::Vec3b(7, 8, 9), cv::Vec3b(0, 255, 1));
  HostRecord record(frame);
  EXPECT_TRUE(SameMatrix(Convert(record), frame));
}

TEST(ConvertRecord, GreyIsRepeated) {
  const cv::Mat frame = (cv::Mat_<uchar>(1, 3) << 0, 7, 255);
  HostRecord record(frame);
  const cv::Mat expected =
      (cv::Mat_<cv::Vec3b>(1, 3) << cv::Vec3b::all(0), cv::Vec3b::all(7), cv::Vec3b::all(255));
  EXPECT_TRUE(SameMatrix(Convert(record), expected));
}

TEST(ConvertRecord, AlphaIsDropped) {
  const cv::Mat frame =
      (cv::Mat_<cv::Vec4b>(1, 2) << cv::Vec4b(1, 2, 3, 0), cv::Vec4b(4, 5, 6, 255));
  HostRecord record(frame);
  const cv::Mat expected = (cv::Mat_<cv::Vec3b>(1, 2) << cv::Vec3b(1, 2, 3), cv::Vec3b(4, 5, 6));
  EXPECT_TRUE(SameMatrix(Convert(record), expected));
}

TEST(ConvertRecord, OfTwoBytesTheHighOneIsKept) {
  HostRecord grey((cv::Mat_<ushort>(1, 3) << 0x00FF, 0x0100, 0xFF7F));
  const cv::Mat fromGrey =
      (cv::Mat_<cv::Vec3b>(1, 3) << cv::Vec3b::all(0), cv::Vec3b::all(1), cv::Vec3b::all(255));
  EXPECT_TRUE(SameMatrix(Convert(grey), fromGrey));

  HostRecord colour((cv::Mat_<cv::Vec3w>(1, 1) << cv::Vec3w(0x12FF, 0x3400, 0x5680)));
  EXPECT_EQ(Convert(colour).at<cv::Vec3b>(0, 0), cv::Vec3b(0x12, 0x34, 0x56));

  HostRecord alpha((cv::Mat_<cv::Vec4w>(1, 1) << cv::Vec4w(0x12FF, 0x3400, 0x5680, 0x7890)));
  EXPECT_EQ(Convert(alpha).at<cv::Vec3b>(0, 0), cv::Vec3b(0x12, 0x34, 0x56));
}

TEST(ConvertRecord, ZeroSamplesStay) {
  HostRecord record(cv::Mat::zeros(3, 4, CV_8UC3));
  EXPECT_TRUE(SameMatrix(Convert(record), cv::Mat::zeros(3, 4, CV_8UC3)));
}

TEST(ConvertRecord, LinesMayBePadded) {
  RandomSource random(3);
  const cv::Mat frame = pictures::Noise(random, 6, 5, CV_8UC3);
  HostRecord record(frame, 7);
  EXPECT_TRUE(SameMatrix(Convert(record), frame));
}

TEST(ConvertRecord, BufferMayBeLargerThanItsLines) {
  HostRecord record(cv::Mat(4, 5, CV_8UC3, cv::Scalar::all(8)));
  record->bufferSize = 4000000000u;
  EXPECT_TRUE(SameMatrix(Convert(record), cv::Mat(4, 5, CV_8UC3, cv::Scalar::all(8))));
}

TEST(ConvertRecord, BufferOfTheRightSizeIsKept) {
  HostRecord record(cv::Mat(4, 5, CV_8UC3, cv::Scalar::all(8)));
  cv::Mat out(4, 5, CV_8UC3);
  const unsigned char* pixels = out.data;
  ConvertJQImgToCv8UC3(record.get(), out);
  EXPECT_EQ(out.data, pixels);
}

TEST(ConvertRecord, ViewOfTheRightSizeIsFilledInPlace) {
  HostRecord record(cv::Mat(4, 5, CV_8UC3, cv::Scalar::all(8)));
  cv::Mat whole = cv::Mat::zeros(6, 7, CV_8UC3);
  cv::Mat out = whole(cv::Rect(1, 1, 5, 4));
  ConvertJQImgToCv8UC3(record.get(), out);
  cv::Mat expected = cv::Mat::zeros(6, 7, CV_8UC3);
  expected(cv::Rect(1, 1, 5, 4)).setTo(cv::Scalar::all(8));
  EXPECT_TRUE(SameMatrix(whole, expected));
}

TEST(ConvertRecord, BufferOfAnotherSizeOrTypeIsReplaced) {
  HostRecord record(cv::Mat(4, 5, CV_8UC3, cv::Scalar::all(8)));
  for (cv::Mat out : {cv::Mat(5, 4, CV_8UC3), cv::Mat(4, 5, CV_8UC1), cv::Mat(4, 5, CV_16UC3)}) {
    const cv::Mat old = out;
    const cv::Mat kept = old.clone();
    ConvertJQImgToCv8UC3(record.get(), out);
    EXPECT_TRUE(SameMatrix(out, cv::Mat(4, 5, CV_8UC3, cv::Scalar::all(8))));
    EXPECT_TRUE(SameMatrix(old, kept));
  }
}

// The record may point at the pixels of the matrix that is replaced.
TEST(ConvertRecord, RecordMayShowTheMatrixThatItReplaces) {
  cv::Mat out(4, 5, CV_8UC4, cv::Scalar(1, 2, 3, 4));
  HostRecord record(out);
  record->pixels = out.data;
  ConvertJQImgToCv8UC3(record.get(), out);
  EXPECT_TRUE(SameMatrix(out, cv::Mat(4, 5, CV_8UC3, cv::Scalar(1, 2, 3))));
}

TEST(ConvertRecord, LargestRecord) {
  HostRecord record(cv::Mat(1, 65535, CV_8UC3, cv::Scalar::all(8)));
  EXPECT_EQ(Convert(record).size(), cv::Size(65535, 1));
  // 65535 lines of 4 gigabytes' worth do not pass as a small buffer.
  record->height = 65535;
  record->bytesPerLine = 2147483647;
  record->bufferSize = 4294967295u;
  cv::Mat out;
  EXPECT_THROW(ConvertJQImgToCv8UC3(record.get(), out), cv::Exception);
}

TEST(ConvertRecord, NullRecordIsRefused) {
  cv::Mat out;
  EXPECT_THROW(ConvertJQImgToCv8UC3(nullptr, out), cv::Exception);
}

TEST_P(BadRecord, IsRefusedByNameAndTheMatrixStays) {
  HostRecord record(cv::Mat(4, 5, CV_8UC3, cv::Scalar::all(8)));
  GetParam().spoil(record.get());
  for (const cv::Size size : {cv::Size(5, 4), cv::Size(2, 2)}) {
    cv::Mat out(size, CV_8UC3, cv::Scalar::all(99));
    const unsigned char* pixels = out.data;
    try {
      ConvertJQImgToCv8UC3(record.get(), out);
      ADD_FAILURE() << "was taken";
    } catch (const cv::Exception& e) {
      const std::string wanted = std::string(GetParam().field) + " is " + GetParam().value + ",";
      EXPECT_NE(e.err.find(wanted), std::string::npos) << e.err;
    }
    EXPECT_EQ(out.data, pixels);
    EXPECT_TRUE(SameMatrix(out, cv::Mat(size, CV_8UC3, cv::Scalar::all(99))));
  }
  cv::Mat empty;
  EXPECT_THROW(ConvertJQImgToCv8UC3(record.get(), empty), cv::Exception);
  EXPECT_TRUE(empty.empty());
}

INSTANTIATE_TEST_SUITE_P(Rows, BadRecord, ::testing::ValuesIn(kBadRows),
                         [](const auto& row) { return row.param.name; });

TEST_P(ConvertProperty, IsThatOfTheTwin) {
  Repeat(400, [](RandomSource& random) {
    const int channels[] = {1, 3, 4};
    const int depth = random.OneIn(2) ? CV_8U : CV_16U;
    const int type = CV_MAKETYPE(depth, channels[random.Int(0, 2)]);
    cv::Mat bytes = pictures::Noise(
        random, cv::Size{random.Size(70) * static_cast<int>(CV_ELEM_SIZE(type)), random.Size(40)},
        CV_8UC1);
    const cv::Mat frame(bytes.rows, bytes.cols / static_cast<int>(CV_ELEM_SIZE(type)), type,
                        bytes.data, bytes.step);
    HostRecord record(frame, random.OneIn(2) ? random.Int(1, 9) : 0);
    cv::Mat expected;
    reference::ConvertJQImgToCv8UC3(record.get(), expected);
    EXPECT_TRUE(SameMatrix(Convert(record), expected));
  });
}

// One random byte of a sound record changed: both take it or both refuse it.
TEST_P(ConvertProperty, RefusalIsThatOfTheTwin) {
  Repeat(2000, [](RandomSource& random) {
    const cv::Mat picture = pictures::Noise(random, 3, 4, CV_8UC3);
    HostRecord record(picture, random.Int(0, 3));
    const int fields[] = {12, 13, 14, 15, 16, 17, 18, 19, 20, 22, 23, 32, 33, 34, 35};
    auto* bytes = reinterpret_cast<unsigned char*>(record.get());
    bytes[fields[random.Int(0, 14)]] =
        static_cast<unsigned char>(random.OneIn(2) ? random.Int(0, 5) : random.Int(0, 255));
    // Room for whatever a lying buffer size lets through.
    std::vector<unsigned char> room(1 << 16, 3);
    if (record->bufferSize > room.size()) return;
    record->pixels = room.data();
    cv::Mat actual, expected;
    const Outcome outcome = Ending([&] { ConvertJQImgToCv8UC3(record.get(), actual); });
    EXPECT_EQ(outcome, Ending([&] { reference::ConvertJQImgToCv8UC3(record.get(), expected); }));
    if (outcome == Outcome::kReturned) {
      EXPECT_TRUE(SameMatrix(actual, expected));
    }
  });
}

INSTANTIATE_TEST_SUITE_P(Once, ConvertProperty, ::testing::Values(CpuLevels().back()));
