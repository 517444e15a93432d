#ifndef JQSTITCH_SIMULATE_VIDEO_FILE_H
#define JQSTITCH_SIMULATE_VIDEO_FILE_H

#include <opencv2/core.hpp>
#include <opencv2/videoio.hpp>
#include <string>

namespace jqstitch {

/// A video in Motion JPEG, which the image library writes by itself, whatever video
/// libraries the machine has. Every failure raises `InputError`.
class VideoFile {
 public:
  /// @param quality of the JPEGs, 1 to 100
  VideoFile(const std::string& path, cv::Size frame, int quality);

  void Write(const cv::Mat& image);
  void Close();

 private:
  std::string m_path;
  cv::VideoWriter m_writer;
};

}  // namespace jqstitch

#endif  // JQSTITCH_SIMULATE_VIDEO_FILE_H
