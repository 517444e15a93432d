#include <gtest/gtest.h>

#include "engine/engine_access.h"
#include "registration/registration_step.h"
#include "support/pictures.h"

// Which of the two pictures shows no corners is told to the host, so the two must not be
// mixed up: with three channels (corners of the reference are remembered) and with four
// (each picture goes through the public steps).
TEST(CornersFound, TellsThePicturesApart) {
  RandomSource random(5);
  for (const int type : {CV_8UC3, CV_8UC4}) {
    const cv::Mat textured = pictures::Texture(random, 200, 240, type);
    const cv::Mat flat = pictures::Flat(200, 240, type, 90);
    for (const auto& [first, second] : {std::pair(textured, flat), std::pair(flat, textured),
                                        std::pair(flat, flat), std::pair(textured, textured)}) {
      JQStitchingAlgorithm engine;
      int x = 0, y = 0, support = -1;
      const jqstitching::CornersFound found = jqstitching::Register(
          engine, jqstitching::EngineAccess::workspace(engine), first, second, x, y, support);
      EXPECT_EQ(found.first, first.data == textured.data);
      EXPECT_EQ(found.second, second.data == textured.data);
      EXPECT_EQ(support > 0, found.first && found.second);
      EXPECT_EQ(found.matched > 0, found.first && found.second);
    }
  }
}
