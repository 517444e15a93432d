#include "source/camera_name.h"

#include <gtest/gtest.h>

#include "source/source_choice.h"

namespace jqscope {
namespace {

TEST(CameraNameTest, ReadsAndWritesAllKinds) {
  const struct {
    const char* text;
    bool genicam;
    const char* name;
    cv::Size size;
    double rate;
  } rows[] = {
      {"0", false, "0", {}, 0},
      {"12@1280x720", false, "12", {1280, 720}, 0},
      {"0@1280x720@7.5", false, "0", {1280, 720}, 7.5},
      {"genicam:", true, "", {}, 0},
      {"genicam:Maker-A@B", true, "Maker-A@B", {}, 0},
      {"genicam:Maker-1@640x480@30", true, "Maker-1", {640, 480}, 30},
      {"rtsp://me@host/live", false, "rtsp://me@host/live", {}, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    const std::optional<CameraName> camera = ParseCameraName(row.text);
    ASSERT_TRUE(camera);
    EXPECT_EQ(camera->genicam, row.genicam);
    EXPECT_EQ(camera->name, row.name);
    EXPECT_EQ(camera->mode.size, row.size);
    EXPECT_EQ(camera->mode.rate, row.rate);
    EXPECT_EQ(CameraText(*camera), row.text);
    // A journal names it by the same words.
    const SourceChoice choice = ChooseSource(std::string(row.text));
    EXPECT_EQ(choice.kind, SourceKind::kCamera);
    EXPECT_EQ(SourceWords(choice), std::vector<std::string>{row.text});
  }
}

TEST(CameraNameTest, EverythingElseIsNoCamera) {
  for (const char* text : {"", "frames", "1234", "0@720", "0@x720", "0@1x2@", "-1", "0 ", "./0"}) {
    EXPECT_FALSE(ParseCameraName(text)) << text;
  }
}

}  // namespace
}  // namespace jqscope
