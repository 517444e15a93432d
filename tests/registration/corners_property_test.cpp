#include <gtest/gtest.h>

#include <vector>

#include "support/engine_pair.h"
#include "support/guarded_matrix.h"
#include "support/property_test.h"

namespace {

using Points = std::vector<cv::Point>;

class CornersProperty : public PropertyTest {
 protected:
  // Around the sizes from which on there are corners, halved and not.
  static int Side(RandomSource& random) {
    switch (random.Int(0, 4)) {
      case 0:
        return random.Int(1, 45);
      case 1:
        return random.Int(38, 44);
      case 2:
        return random.Int(79, 90);
      default:
        return random.Int(41, 210);
    }
  }
  void Compare(EnginePair& engines, RandomSource& random, const cv::Mat& picture) {
    const GuardedMatrix image(random, picture);
    Points one;
    if (random.OneIn(4)) {
      const cv::Point before(random.Int(-9, 9), 3);
      one.resize(random.Int(1, 5), before);
    }
    Points two = one;
    const Outcome library =
        Ending([&] { engines.library.FindHarrisCornerCoordianteFun(image.View(), one); });
    const Outcome twin =
        Ending([&] { engines.twin.FindHarrisCornerCoordianteFun(image.View(), two); });
    SCOPED_TRACE(::testing::Message()
                 << picture.rows << " rows x " << picture.cols << " columns, level "
                 << engines.twin.m_nDetectLevel << ", budget " << engines.twin.m_nCornerBudget);
    EXPECT_EQ(library, twin);
    EXPECT_TRUE(SamePoints(one, two));
    EXPECT_TRUE(engines.SameMembers());
    EXPECT_TRUE(image.Untouched());
  }
};
JQ_AT_EVERY_CPU_LEVEL(CornersProperty);

TEST_P(CornersProperty, EqualTheTwinOnAnyPicture) {
  Repeat(400, [this](RandomSource& random) {
    EnginePair engines;
    engines.RandomParameters(random, -1, 8);
    const int type = random.OneIn(8) ? CV_8UC3 : CV_8UC1;
    Compare(engines, random, pictures::Any(random, cv::Size{Side(random), Side(random)}, type));
  });
}

// Pictures large enough for the budget and the pre-selection to bite.
TEST_P(CornersProperty, EqualTheTwinOnRichPictures) {
  Repeat(8, [this](RandomSource& random) {
    EnginePair engines;
    engines.RandomParameters(random, 1, 7);
    const cv::Mat picture =
        pictures::Texture(random, cv::Size{random.Int(250, 420), random.Int(250, 420)}, CV_8UC1);
    Compare(engines, random, picture);
    Compare(engines, random, pictures::Noise(random, 300, 300, CV_8UC1));
  });
}

// One engine, many pictures: nothing of one call may show in the next.
TEST_P(CornersProperty, EqualTheTwinCallAfterCall) {
  Repeat(40, [this](RandomSource& random) {
    EnginePair engines;
    for (int k = 0; k < 8 && !HasFailure(); ++k) {
      engines.RandomParameters(random, 1, 8);
      Compare(engines, random,
              pictures::Any(random, cv::Size{Side(random), Side(random)}, CV_8UC1));
    }
  });
}

}  // namespace
