// Matrices of more than two dimensions have no rows and columns. Every public method
// that takes a matrix refuses them, one argument after the other.

#include <gtest/gtest.h>

#include <functional>
#include <ostream>

#include "support/outcome.h"
#include "support/stitcher_access.h"

namespace {

using Points = std::vector<cv::Point>;

struct Row {
  const char* name;
  std::function<void(JQStitchingAlgorithm&, cv::Mat cube, cv::Mat flat)> call;
};

void PrintTo(const Row& row, std::ostream* out) {
  *out << row.name;
}

class Dimensions : public ::testing::TestWithParam<Row> {};

// Outputs that no test reads.
cv::Mat g_mat, g_other;
cv::Point g_a, g_b, g_c;
int g_x, g_y, g_n;
float g_f;
Points g_points;
stitchflags g_flags;

void Offset(JQStitchingAlgorithm& e, int index, cv::Mat ref, cv::Mat prev, cv::Mat cur,
            cv::Mat mosaic) {
  e.StitchingImage_offset(index, ref, prev, cur, g_a, g_b, mosaic, g_flags);
}

const Row kRows[] = {
    {"JudgeImageChannel", [](auto& e, cv::Mat c, cv::Mat) { e.JudgeImageChannel(c, g_mat); }},
    {"Corners", [](auto& e, cv::Mat c, cv::Mat) { e.FindHarrisCornerCoordianteFun(c, g_points); }},
    {"Descriptors",
     [](auto& e, cv::Mat c, cv::Mat) {
       e.NoRotaFeatureDescriber(c, {{1, 1}}, g_mat);
     }},
    {"DescriptorsOfNoCorner",
     [](auto& e, cv::Mat c, cv::Mat) { e.NoRotaFeatureDescriber(c, {}, g_mat); }},
    {"DistancesFirst",
     [](auto& e, cv::Mat c, cv::Mat f) { e.CalacDistanceIndexFun(c, f, g_points); }},
    {"DistancesSecond",
     [](auto& e, cv::Mat c, cv::Mat f) { e.CalacDistanceIndexFun(f, c, g_points); }},
    {"MosaicFirst", [](auto& e, cv::Mat c, cv::Mat f) { e.ImageMosaicFun(c, f, g_x, g_y, g_n); }},
    {"MosaicSecond", [](auto& e, cv::Mat c, cv::Mat f) { e.ImageMosaicFun(f, c, g_x, g_y, g_n); }},
    {"OffsetReference", [](auto& e, cv::Mat c, cv::Mat f) { Offset(e, 0, c, f, f, f); }},
    {"OffsetPrevious", [](auto& e, cv::Mat c, cv::Mat f) { Offset(e, 0, f, c, f, f); }},
    {"OffsetCurrent", [](auto& e, cv::Mat c, cv::Mat f) { Offset(e, 0, f, f, c, f); }},
    {"OffsetMosaic", [](auto& e, cv::Mat c, cv::Mat f) { Offset(e, 1, f, f, f, c); }},
    {"FlagesFirst",
     [](auto& e, cv::Mat c, cv::Mat f) { e.CalacOverLapImageFlages(0, 0, 9, 9, c, f, g_n); }},
    {"FlagesSecond",
     [](auto& e, cv::Mat c, cv::Mat f) { e.CalacOverLapImageFlages(0, 0, 9, 9, f, c, g_n); }},
    {"BrightFirst", [](auto& e, cv::Mat c, cv::Mat f) { e.CalacOverLapImageBright(c, f, g_f); }},
    {"BrightSecond", [](auto& e, cv::Mat c, cv::Mat f) { e.CalacOverLapImageBright(f, c, g_f); }},
    {"DefinitionFirst",
     [](auto& e, cv::Mat c, cv::Mat f) { e.CalacOverLapImageDefinition(c, f, g_f); }},
    {"DefinitionSecond",
     [](auto& e, cv::Mat c, cv::Mat f) { e.CalacOverLapImageDefinition(f, c, g_f); }},
    {"TakeOutOfMosaicFirst",
     [](auto& e, cv::Mat c, cv::Mat f) {
       e.TakeOutOverLapImageFromMoasicImage({0, 0}, 0, 0, c, f, g_mat, g_other);
     }},
    {"TakeOutOfMosaicSecond",
     [](auto& e, cv::Mat c, cv::Mat f) {
       e.TakeOutOverLapImageFromMoasicImage({0, 0}, 0, 0, f, c, g_mat, g_other);
     }},
    {"TakeOutFirst",
     [](auto& e, cv::Mat c, cv::Mat f) {
       e.TakeOutOverLapImage({0, 0}, 0, 0, c, f, g_mat, g_other);
     }},
    {"TakeOutSecond",
     [](auto& e, cv::Mat c, cv::Mat f) {
       e.TakeOutOverLapImage({0, 0}, 0, 0, f, c, g_mat, g_other);
     }},
    {"MotionFirst", [](auto& e, cv::Mat c, cv::Mat f) { e.ImageMotionModel(c, f); }},
    {"MotionSecond", [](auto& e, cv::Mat c, cv::Mat f) { e.ImageMotionModel(f, c); }},
    {"BlendMosaic",
     [](auto& e, cv::Mat c, cv::Mat f) {
       e.StitchingImage_imageblend(c, f, {}, {}, {}, {}, g_a, g_b, g_c, g_mat, g_other);
     }},
    {"BlendFrame",
     [](auto& e, cv::Mat c, cv::Mat f) {
       e.StitchingImage_imageblend(f, c, {}, {}, {}, {}, g_a, g_b, g_c, g_mat, g_other);
     }},
    {"BorderExpand",
     [](auto& e, cv::Mat c, cv::Mat) {
       e.BorderExpand(c, 1, 1, 5, 5, 1, 1, 99, 99, {0, 0}, g_mat, g_a, {}, {}, g_b, g_c);
     }},
    {"FusionOld", [](auto& e, cv::Mat c, cv::Mat f) { e.TwoImageFusion(c, f, g_mat); }},
    {"FusionNew", [](auto& e, cv::Mat c, cv::Mat f) { e.TwoImageFusion(f, c, g_mat); }},
    {"WeightOld", [](auto& e, cv::Mat c, cv::Mat f) { e.WeightofTwoAreaFun(c, f, g_mat); }},
    {"WeightNew", [](auto& e, cv::Mat c, cv::Mat f) { e.WeightofTwoAreaFun(f, c, g_mat); }},
};

cv::Mat Cube(int type) {
  const int sizes[] = {30, 30, 30};
  return cv::Mat(3, sizes, type, cv::Scalar::all(7));
}

}  // namespace

TEST_P(Dimensions, MoreThanTwoAreRefused) {
  for (const int type : {CV_8UC1, CV_8UC3}) {
    for (const int mode : {0, 1}) {
      for (const int level : {1, 2}) {
        JQStitchingAlgorithm engine;
        engine.SetParameter(level, 8, mode, 1);
        const cv::Mat flat(60, 60, type, cv::Scalar::all(7));
        EXPECT_EQ(Ending([&] { GetParam().call(engine, Cube(type), flat); }),
                  Outcome::kImageLibraryError);
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Methods, Dimensions, ::testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

TEST(StitcherDimensions, CanvasMethodsRefuseThem) {
  JQImageStitching stitcher;
  cv::Mat cube = Cube(CV_8UC3);
  cv::Mat frame(4, 6, CV_8UC3, cv::Scalar::all(7));
  EXPECT_EQ(Ending([&] { stitcher.initResultMat(&cube); }), Outcome::kImageLibraryError);
  EXPECT_EQ(stitcher.m_canvasRows, 10000);
  stitcher.initResultMat(&frame);
  EXPECT_EQ(Ending([&] { stitcher.extendResultMat(&cube); }), Outcome::kImageLibraryError);
  EXPECT_EQ(Ending([&] { stitcher.findCutPoint(&cube); }), Outcome::kImageLibraryError);
  stitcher.m_resultMat = cube;
  EXPECT_EQ(Ending([&] { stitcher.extendResultMat(&frame); }), Outcome::kImageLibraryError);
}
