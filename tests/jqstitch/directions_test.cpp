// Whatever way the camera moves, every placed frame is in the saved picture, whole.
// A run up and to the right makes the library's own box unusable.
#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include "jqstitch/run_program.h"
#include "jqstitch/scene_frames.h"

namespace jqstitch_test {
namespace {

using nlohmann::json;

constexpr int kFrames = 5;
const cv::Size kFrame(320, 240);

struct Direction {
  const char* name;
  cv::Point step;
};

const Direction kDirections[] = {
    {"right", {96, 0}}, {"downRight", {96, 72}}, {"down", {0, 80}}, {"downLeft", {-96, 72}},
    {"left", {-96, 0}}, {"upLeft", {-96, -72}},  {"up", {0, -80}},  {"upRight", {96, -72}}};

class EveryDirection : public testing::TestWithParam<std::tuple<const char*, Direction>> {};

TEST_P(EveryDirection, EveryPlacedFrameIsInThePictureWhole) {
  const auto [command, direction] = GetParam();
  const TemporaryFolder folder;
  const std::vector<cv::Point> corners = Walk(kFrames, direction.step);
  const std::vector<std::string> files = WriteFrames(folder.Path(), corners, kFrame);
  const cv::Mat scene = MakeScene(SceneSize(corners, kFrame));

  std::vector<std::string> arguments = {command, "-o", folder / "mosaic.png", "--report",
                                        folder / "report.json"};
  arguments.insert(arguments.end(), files.begin(), files.end());
  const Outcome outcome = RunProgram(arguments);
  ASSERT_EQ(outcome.exitCode, 0) << outcome.err;

  const cv::Mat picture = ReadPictureFile(folder / "mosaic.png");
  // The picture is exactly what the frames cover, as the steps tell.
  const cv::Size covered(kFrame.width + std::abs(direction.step.x) * (kFrames - 1),
                         kFrame.height + std::abs(direction.step.y) * (kFrames - 1));
  EXPECT_NEAR(picture.cols, covered.width, 2 * kFrames);
  EXPECT_NEAR(picture.rows, covered.height, 2 * kFrames);

  const json report = ReadJson(folder / "report.json");
  ASSERT_EQ(report["list"].size(), std::size_t(kFrames));
  for (int i = 0; i < kFrames; ++i) {
    const json& entry = report["list"][i];
    ASSERT_TRUE(entry["placed"]) << entry;
    const cv::Point corner(entry["corner"]["x"], entry["corner"]["y"]);
    const cv::Rect area(corner, kFrame);
    ASSERT_EQ(area & cv::Rect({0, 0}, picture.size()), area) << entry;
    const cv::Point expected = corners[i] - corners[0];
    EXPECT_NEAR(int(entry["position"]["x"]), expected.x, 2 * kFrames);
    EXPECT_NEAR(int(entry["position"]["y"]), expected.y, 2 * kFrames);
    // No pixel of it is empty, and it shows the scene at that place: a shift of
    // a few pixels blurs, another place would differ by far more.
    cv::Mat empty;
    cv::inRange(picture(area), cv::Scalar::all(0), cv::Scalar::all(0), empty);
    EXPECT_EQ(cv::countNonZero(empty), 0) << entry;
    cv::Mat difference, soft, softScene;
    cv::blur(picture(area), soft, {15, 15});
    cv::blur(scene(cv::Rect(corners[i], kFrame)), softScene, {15, 15});
    cv::absdiff(soft, softScene, difference);
    const cv::Scalar mean = cv::mean(difference);
    EXPECT_LT(mean[0] + mean[1] + mean[2], 3 * 4.0) << entry;
  }
  if (std::string(direction.name) == "upRight") {
    EXPECT_EQ(report["picture"]["trimmedBy"], "placed frames");
    EXPECT_NE(outcome.err.find("Trimmed to the placed frames"), std::string::npos);
  }
}

INSTANTIATE_TEST_SUITE_P(Jqstitch, EveryDirection,
                         testing::Combine(testing::Values("live", "batch"),
                                          testing::ValuesIn(kDirections)),
                         [](const auto& parameters) {
                           return std::string(std::get<0>(parameters.param)) + "_" +
                                  std::get<1>(parameters.param).name;
                         });

}  // namespace
}  // namespace jqstitch_test
