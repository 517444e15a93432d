#include "jqstitch/scene_frames.h"

#include <gtest/gtest.h>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <sstream>

#include "jqstitch/run_program.h"

namespace jqstitch_test {

cv::Mat MakeScene(cv::Size size) {
  cv::RNG random(4711);
  cv::Mat scene(size, CV_8UC3, cv::Scalar(200, 190, 210));
  const int shapes = size.area() / 220;
  for (int i = 0; i < shapes; ++i) {
    const cv::Point centre{random.uniform(0, size.width), random.uniform(0, size.height)};
    cv::Scalar colour;
    for (int k = 0; k < 3; ++k) colour[k] = random.uniform(60, 250);
    if (i % 2 == 0) {
      cv::circle(scene, centre, random.uniform(3, 9), colour, cv::FILLED, cv::LINE_AA);
    } else {
      const cv::Size half{random.uniform(2, 9), random.uniform(2, 9)};
      cv::rectangle(scene, cv::Rect(centre - cv::Point(half), half * 2), colour, cv::FILLED);
    }
  }
  cv::GaussianBlur(scene, scene, cv::Size(3, 3), 0.7);
  return scene;
}

std::vector<cv::Point> Walk(int count, cv::Point step) {
  // The first corner leaves room for a walk up or to the left.
  const cv::Point start(step.x < 0 ? -step.x * (count - 1) : 0,
                        step.y < 0 ? -step.y * (count - 1) : 0);
  std::vector<cv::Point> corners;
  for (int i = 0; i < count; ++i) corners.push_back(start + step * i);
  return corners;
}

cv::Size SceneSize(const std::vector<cv::Point>& corners, cv::Size frame) {
  cv::Size size = frame;
  for (const cv::Point& corner : corners) {
    size.width = std::max(size.width, corner.x + frame.width);
    size.height = std::max(size.height, corner.y + frame.height);
  }
  return size;
}

std::vector<std::string> WriteFrames(const std::string& folder,
                                     const std::vector<cv::Point>& corners, cv::Size frame) {
  const cv::Mat scene = MakeScene(SceneSize(corners, frame));
  std::vector<std::string> paths;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    paths.push_back(folder + "/f" + std::to_string(i + 1) + ".png");
    EXPECT_TRUE(cv::imwrite(paths.back(), scene(cv::Rect(corners[i], frame))));
  }
  return paths;
}

std::vector<std::string> WriteWalk(const std::string& folder, int count, cv::Point step,
                                   cv::Size frame) {
  return WriteFrames(folder, Walk(count, step), frame);
}

nlohmann::json ReadJson(const std::string& path) {
  const nlohmann::json document = nlohmann::json::parse(ReadFile(path), nullptr, false);
  EXPECT_FALSE(document.is_discarded()) << path;
  return document;
}

std::vector<nlohmann::json> Events(const std::string& out) {
  std::vector<nlohmann::json> events;
  std::istringstream lines(out);
  for (std::string line; std::getline(lines, line);) {
    events.push_back(nlohmann::json::parse(line, nullptr, false));
    EXPECT_TRUE(events.back().is_object()) << line;
  }
  return events;
}

std::vector<nlohmann::json> EventsOf(const std::string& out, const std::string& kind) {
  std::vector<nlohmann::json> found;
  for (const nlohmann::json& event : Events(out)) {
    if (event.value("event", "") == kind) found.push_back(event);
  }
  return found;
}

cv::Mat ReadPictureFile(const std::string& path) {
  const cv::Mat picture = cv::imread(path, cv::IMREAD_UNCHANGED);
  EXPECT_FALSE(picture.empty()) << path;
  return picture;
}

std::vector<std::string> TemporaryFilesIn(const std::string& folder) {
  std::vector<std::string> found;
  for (const std::string& name : ListFolder(folder)) {
    if (name.rfind(".jqstitch-", 0) == 0) found.push_back(name);
  }
  return found;
}

}  // namespace jqstitch_test
