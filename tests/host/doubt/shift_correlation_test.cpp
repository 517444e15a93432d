#include "host/verdict/doubt/shift_correlation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

#include "doubt_pictures.h"

using jqhost::CorrelateShifts;
using jqhost::PlacementView;
using jqhost::ShiftCorrelation;

namespace {

// The contract's formula, summed sample by sample over the common area.
double PlainCorrelation(const cv::Mat& before, const cv::Mat& current, cv::Point shift) {
  double n = 0, a = 0, b = 0, aa = 0, bb = 0, ab = 0;
  for (int r = 0; r < current.rows; ++r) {
    for (int c = 0; c < current.cols; ++c) {
      const int y = r + shift.y, x = c + shift.x;
      if (y < 0 || x < 0 || y >= before.rows || x >= before.cols) continue;
      const double p = before.at<float>(y, x), q = current.at<float>(r, c);
      n += 1, a += p, b += q, aa += p * p, bb += q * q, ab += p * q;
    }
  }
  return (ab - a * b / n) / std::sqrt((aa - a * a / n) * (bb - b * b / n));
}

int PlainArea(cv::Size view, cv::Point shift) {
  return (view.width - std::abs(shift.x)) * (view.height - std::abs(shift.y));
}

}  // namespace

TEST(ShiftCorrelation, EqualsDirectSums) {
  for (const cv::Size size : {cv::Size(128, 96), cv::Size(140, 68), cv::Size(83, 180)}) {
    for (std::uint64_t seed = 1; seed <= 3; ++seed) {
      SCOPED_TRACE(testing::Message() << size << " seed " << seed);
      const cv::Mat scene = RandomScene(size * 2, seed);
      const PlacementView before = ViewOf(scene(cv::Rect(cv::Point(), size)));
      const PlacementView current = ViewOf(scene(cv::Rect(cv::Point(18, 9), size)));
      const ShiftCorrelation map = CorrelateShifts(before, current);
      const cv::Size view = before.samples.size();
      for (int y = -view.height; y <= view.height; ++y) {
        for (int x = -view.width; x <= view.width; ++x) {
          const cv::Point shift(x, y);
          const bool wide = view.width - std::abs(x) >= 8 && view.height - std::abs(y) >= 8 &&
                            PlainArea(view, shift) >= 0.06 * view.area();
          if (!wide) {
            ASSERT_EQ(map.At(shift), ShiftCorrelation::kNone) << shift;
          } else {
            ASSERT_EQ(map.Area(shift), PlainArea(view, shift)) << shift;
            ASSERT_NEAR(map.At(shift), PlainCorrelation(before.samples, current.samples, shift),
                        1e-4)
                << shift;
          }
        }
      }
    }
  }
}

TEST(ShiftCorrelation, FlatAreasAreNotCompared) {
  cv::Mat frame(96, 128, CV_8UC1, cv::Scalar(100));
  RandomScene({40, 96}, 5).copyTo(frame(cv::Rect(0, 0, 40, 96)));
  const PlacementView view = ViewOf(frame);
  const ShiftCorrelation map = CorrelateShifts(view, view);
  EXPECT_NEAR(map.At({0, 0}), 1.0, 1e-5);
  // Of the first view only the even right part is left.
  EXPECT_EQ(map.At({40, 0}), ShiftCorrelation::kNone);
}

TEST(ShiftCorrelation, DoesNotDependOnThreads) {
  const cv::Mat scene = RandomScene({900, 700}, 3);
  const auto correlate = [&scene] {
    return CorrelateShifts(ViewOf(scene(cv::Rect(0, 0, 640, 480))),
                           ViewOf(scene(cv::Rect(130, 77, 640, 480))))
        .values;
  };
  const int threads = cv::getNumThreads();
  cv::setNumThreads(1);
  const cv::Mat one = correlate();
  for (const int many : {2, 3, 8}) {
    cv::setNumThreads(many);
    EXPECT_EQ(cv::norm(one, correlate(), cv::NORM_INF), 0.0) << many << " threads";
  }
  cv::setNumThreads(threads);
}
