#include "simulate/video_file.h"

#include <cstdint>
#include <filesystem>

#include "host/input_error.h"

namespace jqstitch {
namespace {

constexpr double kRate = 25.0;  // frames per second
// The offsets in the file are 32 bits wide.
constexpr std::uintmax_t kLargestFile = std::uintmax_t{2000} << 20;

}  // namespace

VideoFile::VideoFile(const std::string& path, cv::Size frame, int quality) : m_path(path) {
  const int code = cv::VideoWriter::fourcc('M', 'J', 'P', 'G');
  bool opened = false;
  try {
    opened = m_writer.open(path, cv::CAP_OPENCV_MJPEG, code, kRate, frame, true);
  } catch (const cv::Exception&) {
  }
  if (!opened) throw jqhost::InputError("cannot write the video '" + path + "'");
  m_writer.set(cv::VIDEOWRITER_PROP_QUALITY, quality);
}

void VideoFile::Write(const cv::Mat& image) {
  m_writer.write(image);
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(m_path, error);
  if (!error && size > kLargestFile) {
    throw jqhost::InputError("the video '" + m_path +
                             "' passes the 2 GB that its format holds: give fewer or smaller "
                             "frames, a lower --jpeg-quality, or write pictures");
  }
}

void VideoFile::Close() {
  m_writer.release();
}

}  // namespace jqstitch
