#ifndef JQSTITCH_TESTS_SCENE_FRAMES_H
#define JQSTITCH_TESTS_SCENE_FRAMES_H

#include <nlohmann/json.hpp>
#include <opencv2/core.hpp>
#include <string>
#include <vector>

namespace jqstitch_test {

/// A large coloured scene of many small shapes, always the same, without black.
cv::Mat MakeScene(cv::Size size);

/// The corners of `count` frames, each `step` further than the one before, inside
/// a scene of `SceneSize`.
std::vector<cv::Point> Walk(int count, cv::Point step);
cv::Size SceneSize(const std::vector<cv::Point>& corners, cv::Size frame);

/// Writes the frames at these corners as "f1.png", "f2.png", ... and returns their
/// paths.
std::vector<std::string> WriteFrames(const std::string& folder,
                                     const std::vector<cv::Point>& corners,
                                     cv::Size frame = {320, 240});

/// Writes the frames at a walk's corners.
std::vector<std::string> WriteWalk(const std::string& folder, int count, cv::Point step,
                                   cv::Size frame = {320, 240});

/// A report, or the events of standard output, one per line. A failed expectation
/// when it is not JSON.
nlohmann::json ReadJson(const std::string& path);
std::vector<nlohmann::json> Events(const std::string& out);

/// The events of one kind.
std::vector<nlohmann::json> EventsOf(const std::string& out, const std::string& kind);

/// Reads a picture as stored; a failed expectation and an empty matrix when it
/// cannot be read.
cv::Mat ReadPictureFile(const std::string& path);

/// Sorted names in a folder that start with ".jqstitch-".
std::vector<std::string> TemporaryFilesIn(const std::string& folder);

}  // namespace jqstitch_test

#endif  // JQSTITCH_TESTS_SCENE_FRAMES_H
