#include <gtest/gtest.h>

#include <utility>

#include "support/engine_pair.h"
#include "support/guarded_matrix.h"
#include "support/property_test.h"

namespace {

int AnyType(RandomSource& random) {
  if (random.OneIn(12)) return random.OneIn(2) ? CV_8UC4 : CV_8UC2;
  return random.OneIn(3) ? CV_8UC1 : CV_8UC3;
}

class ExtractionProperty : public PropertyTest {};
JQ_AT_EVERY_CPU_LEVEL(ExtractionProperty);

TEST_P(ExtractionProperty, EqualsTheTwin) {
  Repeat(1500, [](RandomSource& random) {
    const int rows = random.Size(40);
    const int cols = random.Size(40);
    const int type = AnyType(random);
    const GuardedMatrix first(
        random,
        pictures::Noise(random, cv::Size{random.Int(1, 2 * cols + 9), random.Int(1, 2 * rows + 9)},
                        type));
    const GuardedMatrix second(random, pictures::Noise(random, rows, cols, AnyType(random)));
    const cv::Point origin{random.Int(-1, cols), random.Int(-1, rows)};
    const int dx = random.Int(-cols - 1, cols + 1);
    const int dy = random.Int(-rows - 1, rows + 1);
    const bool mosaic = random.OneIn(2);
    EnginePair engines;
    cv::Mat one[2];
    cv::Mat two[2];
    int k = 0;
    Outcome outcomes[2];
    engines.Both([&](auto& engine) {
      outcomes[k] = Ending([&] {
        if (mosaic) {
          engine.TakeOutOverLapImageFromMoasicImage(origin, dx, dy, first.View(), second.View(),
                                                    one[k], two[k]);
        } else {
          engine.TakeOutOverLapImage(origin, dx, dy, first.View(), second.View(), one[k], two[k]);
        }
      });
      ++k;
    });
    SCOPED_TRACE(::testing::Message() << "origin " << origin << ", shift " << dx << ", " << dy);
    EXPECT_EQ(outcomes[0], outcomes[1]);
    EXPECT_TRUE(SameMatrix(one[0], one[1]));
    EXPECT_TRUE(SameMatrix(two[0], two[1]));
    EXPECT_TRUE(first.Untouched());
    EXPECT_TRUE(second.Untouched());
  });
}

class QualityProperty : public PropertyTest {
 protected:
  static void Compare(RandomSource& random, EnginePair& engines, const GuardedMatrix& first,
                      const GuardedMatrix& second) {
    float bright[2] = {-1.0f, -1.0f};
    float definition[2] = {-1.0f, -1.0f};
    int flag[2] = {-1, -1};
    Outcome outcomes[2][3];
    const int dx = random.Int(-30, 30);
    const int dy = random.Int(-30, 30);
    const float limit = static_cast<float>(random.Int(0, 60));
    int k = 0;
    engines.Both([&](auto& engine) {
      engine.m_fBrightThreshold = limit;
      engine.m_fDefinitionThreshold = limit;
      outcomes[k][0] =
          Ending([&] { engine.CalacOverLapImageBright(first.View(), second.View(), bright[k]); });
      outcomes[k][1] = Ending(
          [&] { engine.CalacOverLapImageDefinition(first.View(), second.View(), definition[k]); });
      outcomes[k][2] = Ending([&] {
        engine.CalacOverLapImageFlages(dx, dy, 25, 25, first.View(), second.View(), flag[k]);
      });
      ++k;
    });
    SCOPED_TRACE(::testing::Message()
                 << first.View().size() << " and " << second.View().size() << ", types "
                 << first.View().type() << " and " << second.View().type());
    for (int call = 0; call < 3; ++call) EXPECT_EQ(outcomes[0][call], outcomes[1][call]) << call;
    EXPECT_TRUE(SameFloat(bright[0], bright[1]));
    EXPECT_TRUE(SameFloat(definition[0], definition[1]));
    EXPECT_EQ(flag[0], flag[1]);
    EXPECT_TRUE(first.Untouched());
    EXPECT_TRUE(second.Untouched());
  }
};
JQ_AT_EVERY_CPU_LEVEL(QualityProperty);

TEST_P(QualityProperty, EqualsTheTwin) {
  Repeat(400, [](RandomSource& random) {
    EnginePair engines;
    const int rows = random.Size(130);
    const int cols = random.Size(130);
    const int type = AnyType(random);
    const GuardedMatrix first(random, pictures::Any(random, rows, cols, type));
    const bool differs = random.OneIn(8);
    const int secondRows = differs ? random.Size(99) : rows;
    const int secondCols = differs ? random.Size(99) : cols;
    const int secondType = differs ? AnyType(random) : type;
    const GuardedMatrix second(random, pictures::Any(random, secondRows, secondCols, secondType));
    Compare(random, engines, first, second);
    Compare(random, engines, second, first);
  });
}

// Sums beyond 2^24 are rounded term by term.
TEST_P(QualityProperty, EqualsTheTwinWhereSumsLoseBits) {
  Repeat(3, [](RandomSource& random) {
    EnginePair engines;
    const int rows = random.Int(700, 760);
    const int cols = random.Int(700, 760);
    const cv::Mat bright = pictures::Noise(random, rows, cols, CV_8UC1, 150, 255);
    const cv::Mat dark = pictures::Noise(random, rows, cols, CV_8UC1, 0, random.Int(1, 60));
    cv::Mat blocks;  // coarse black and white: strong responses
    cv::resize(pictures::Noise(random, rows / 2, cols / 2, CV_8UC1) > 128, blocks, bright.size(), 0,
               0, cv::INTER_NEAREST);
    for (const auto& pair :
         {std::pair(bright, dark), std::pair(blocks, bright), std::pair(dark, blocks)}) {
      const GuardedMatrix first(random, pair.first);
      const GuardedMatrix second(random, pair.second);
      Compare(random, engines, first, second);
    }
  });
}

class MotionProperty : public PropertyTest {};
JQ_AT_EVERY_CPU_LEVEL(MotionProperty);

TEST_P(MotionProperty, EqualsTheTwinInResultAndBlur) {
  Repeat(400, [](RandomSource& random) {
    const int rows = random.Size(130);
    const int cols = random.Size(130);
    const int more = random.OneIn(10) ? 1 : 0;
    const GuardedMatrix first(random, pictures::Any(random, rows, cols, AnyType(random)));
    const GuardedMatrix second(random, pictures::Any(random, rows + more, cols, AnyType(random)));
    const GuardedMatrix firstTwin = first.Twin();
    const GuardedMatrix secondTwin = second.Twin();
    // The same picture twice is blurred twice.
    const bool aliased = random.OneIn(6);
    EnginePair engines;
    int one = -1;
    int two = -1;
    const Outcome library = Ending([&] {
      one = engines.library.ImageMotionModel(first.View(), aliased ? first.View() : second.View());
    });
    const Outcome twin = Ending([&] {
      two = engines.twin.ImageMotionModel(firstTwin.View(),
                                          aliased ? firstTwin.View() : secondTwin.View());
    });
    EXPECT_EQ(library, twin);
    EXPECT_EQ(one, two);
    EXPECT_TRUE(SameMatrix(first.View(), firstTwin.View()));
    EXPECT_TRUE(SameMatrix(second.View(), secondTwin.View()));
    EXPECT_TRUE(first.GuardsIntact());
    EXPECT_TRUE(second.GuardsIntact());
  });
}

}  // namespace
