// Where two pictures overlap, for origins and shifts at the limits of their type: the
// pieces are ranges in 64 bits, and a range outside a picture raises the image library's
// error.

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>

#include "jqstitchingalgorithm.h"
#include "support/compare.h"
#include "support/outcome.h"

namespace {

constexpr int kNumbers[] = {INT_MIN, INT_MIN + 1, -12, -10, -3, -1,          0,
                            1,       4,           10,  12,  48, INT_MAX - 1, INT_MAX};

struct Piece {
  std::int64_t begin, end;
  bool liesIn(std::int64_t size) const { return begin >= 0 && begin <= end && end <= size; }
  cv::Range range() const { return cv::Range(static_cast<int>(begin), static_cast<int>(end)); }
};

}  // namespace

TEST(ExtremeNumbers, Extraction) {
  JQStitchingAlgorithm engine;
  // Every pixel is its own place.
  cv::Mat mosaic(50, 60, CV_32SC1), frame(10, 12, CV_32SC1);
  for (cv::Mat* picture : {&mosaic, &frame}) {
    int place = 0;
    for (int& pixel : cv::Mat_<int>(*picture)) pixel = ++place;
  }
  for (const int origin : kNumbers) {
    for (const int shift : kNumbers) {
      for (const bool across : {true, false}) {
        const int size = across ? frame.cols : frame.rows;
        const std::int64_t o = origin, d = shift;
        const Piece first = d >= 0 ? Piece{o + d, o + size} : Piece{o, o + size + d};
        const Piece second = d >= 0 ? Piece{0, size - d} : Piece{-d, size};
        const bool fits = first.liesIn(across ? mosaic.cols : mosaic.rows) && second.liesIn(size);
        cv::Mat one(1, 1, CV_8UC1, cv::Scalar(7)), two(1, 2, CV_8UC1, cv::Scalar(8));
        const Outcome outcome = Ending([&] {
          engine.TakeOutOverLapImageFromMoasicImage(
              across ? cv::Point(origin, 3) : cv::Point(3, origin), across ? shift : 0,
              across ? 0 : shift, mosaic, frame, one, two);
        });
        SCOPED_TRACE(testing::Message()
                     << "origin " << origin << ", shift " << shift << ", across " << across);
        ASSERT_EQ(outcome, fits ? Outcome::kReturned : Outcome::kImageLibraryError);
        if (!fits) {
          ASSERT_TRUE(one.size() == cv::Size(1, 1) && two.size() == cv::Size(2, 1));
        } else if (first.begin == first.end) {
          ASSERT_TRUE(one.empty() && two.empty());
        } else if (across) {
          ASSERT_TRUE(SameMatrix(one, mosaic(cv::Range(3, 13), first.range())));
          ASSERT_TRUE(SameMatrix(two, frame(cv::Range::all(), second.range())));
        } else {
          ASSERT_TRUE(SameMatrix(one, mosaic(first.range(), cv::Range(3, 15))));
          ASSERT_TRUE(SameMatrix(two, frame(second.range(), cv::Range::all())));
        }
      }
    }
  }
}
