#include <gtest/gtest.h>

#include <vector>

#include "support/engine_pair.h"
#include "support/guarded_matrix.h"
#include "support/property_test.h"

namespace {

class RegistrationProperty : public PropertyTest {
 protected:
  static void Compare(EnginePair& engines, const cv::Mat& first, const cv::Mat& second) {
    int one[3] = {-1, -2, -3};
    int two[3] = {-1, -2, -3};
    const Outcome library = Ending([&] {
      EXPECT_EQ(engines.library.ImageMosaicFun(first, second, one[0], one[1], one[2]), 0);
    });
    const Outcome twin =
        Ending([&] { engines.twin.ImageMosaicFun(first, second, two[0], two[1], two[2]); });
    SCOPED_TRACE(::testing::Message()
                 << first.size() << " and " << second.size() << ", level "
                 << engines.twin.m_nDetectLevel << ", budget " << engines.twin.m_nCornerBudget);
    EXPECT_EQ(library, twin);
    EXPECT_EQ(one[0], two[0]);
    EXPECT_EQ(one[1], two[1]);
    EXPECT_EQ(one[2], two[2]);
    EXPECT_TRUE(engines.SameMembers());
  }
};
JQ_AT_EVERY_CPU_LEVEL(RegistrationProperty);

TEST_P(RegistrationProperty, EqualsTheTwinOnAnyPictures) {
  Repeat(60, [](RandomSource& random) {
    EnginePair engines;
    engines.RandomParameters(random, -1, 8);
    const int types[] = {CV_8UC1, CV_8UC3, CV_8UC3, CV_8UC4, CV_8UC2};
    const int firstType = types[random.OneIn(10) ? random.Int(0, 4) : random.Int(0, 1)];
    const int secondType = random.OneIn(6) ? types[random.Int(0, 4)] : firstType;
    const GuardedMatrix first(
        random, pictures::Any(random, cv::Size{random.Int(1, 190), random.Int(1, 190)}, firstType));
    const GuardedMatrix second(
        random,
        pictures::Any(random, cv::Size{random.Int(1, 190), random.Int(1, 190)}, secondType));
    Compare(engines, first.View(), second.View());
    EXPECT_TRUE(first.Untouched());
    EXPECT_TRUE(second.Untouched());
  });
}

TEST_P(RegistrationProperty, EqualsTheTwinOnShiftedPictures) {
  Repeat(10, [](RandomSource& random) {
    EnginePair engines;
    engines.RandomParameters(random, 1, 6);
    const int type = random.OneIn(3) ? CV_8UC1 : CV_8UC3;
    const cv::Mat scene = pictures::Texture(random, 330, 380, type);
    const cv::Size size{random.Int(200, 300), random.Int(180, 250)};
    const cv::Rect one(cv::Point{random.Int(0, 80), random.Int(0, 80)}, size);
    const cv::Rect two(cv::Point{random.Int(0, 80), random.Int(0, 80)}, size);
    Compare(engines, scene(one), scene(two));
  });
}

// One engine, a few pictures that come back, change in place, move in memory and
// meet other tuning values: whatever is remembered must never be taken for
// another.
TEST_P(RegistrationProperty, EqualsTheTwinWhenPicturesComeBackChanged) {
  Repeat(8, [](RandomSource& random) {
    EnginePair engines;
    const int type = random.OneIn(2) ? CV_8UC1 : CV_8UC3;
    const int rows = random.Int(110, 190);
    const int cols = random.Int(110, 190);
    const cv::Mat scene = pictures::Texture(random, rows + 30, cols + 30, type);
    std::vector<cv::Mat> pool;
    for (int k = 0; k < 3; ++k) {
      pool.push_back(scene(cv::Rect{random.Int(0, 30), random.Int(0, 30), cols, rows}).clone());
    }
    int reference = 0;
    for (int call = 0; call < 12 && !HasFailure(); ++call) {
      if (random.OneIn(4)) reference = random.Int(0, 2);
      cv::Mat& first = pool[reference];
      cv::Mat& second = pool[random.Int(0, 2)];
      switch (random.Int(0, 7)) {
        case 0: {  // one sample, in place
          unsigned char& sample = first.ptr(random.Int(0, rows - 1))[random.Int(0, cols - 1)];
          sample = static_cast<unsigned char>(sample ^ (1 << random.Int(0, 7)));
          break;
        }
        case 1:  // another picture in the same memory
          scene(cv::Rect{random.Int(0, 30), random.Int(0, 30), cols, rows}).copyTo(first);
          break;
        case 2:  // the same picture in other memory
          first = first.clone();
          break;
        case 3:
          engines.RandomParameters(random, 1, 4);
          break;
        case 4:
          cv::setUseOptimized(random.OneIn(2));
          break;
        case 5: {  // the second becomes the first, as after an accepted frame
          first = second.clone();
          break;
        }
        default:
          break;
      }
      Compare(engines, first, second);
    }
  });
}

}  // namespace
