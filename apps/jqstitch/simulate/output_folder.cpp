#include "simulate/output_folder.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <opencv2/imgcodecs.hpp>

#include "host/input_error.h"
#include "host/output/atomic_file.h"

namespace fs = std::filesystem;

namespace jqstitch {
namespace {

constexpr char kTruthName[] = "truth.csv";
constexpr char kVideoName[] = "frames.avi";

// A name that `FrameName` gives: "frame_", digits, ".png" or ".jpg".
bool IsFrameName(const std::string& name) {
  if (name.size() < 11 || name.compare(0, 6, "frame_") != 0) return false;
  const std::string extension = name.substr(name.size() - 4);
  if (extension != ".png" && extension != ".jpg") return false;
  return std::all_of(name.begin() + 6, name.end() - 4,
                     [](unsigned char c) { return std::isdigit(c) != 0; });
}

void RemoveEarlierSimulation(const fs::path& folder) {
  std::vector<fs::path> doomed;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    if (entry.is_regular_file() &&
        (name == kTruthName || name == kVideoName || IsFrameName(name))) {
      doomed.push_back(entry.path());
    }
  }
  for (const fs::path& path : doomed) fs::remove(path);
}

}  // namespace

OutputFolder::OutputFolder(const std::string& path, bool force, int frameCount, int jpegQuality,
                           bool stream)
    : m_path(path),
      m_digits(std::max(4, static_cast<int>(std::to_string(frameCount).size()))),
      m_jpegQuality(jpegQuality),
      m_stream(stream) {
  try {
    if (fs::exists(path) && !fs::is_directory(path)) {
      throw jqhost::InputError("the output '" + path + "' is a file; give a folder");
    }
    fs::create_directories(path);
    if (!fs::is_empty(path)) {
      if (!force) {
        throw jqhost::InputError("the folder '" + path +
                                 "' is not empty; give another one, or --force to replace the "
                                 "frames of an earlier simulation in it");
      }
      RemoveEarlierSimulation(path);
    }
  } catch (const fs::filesystem_error& error) {
    throw jqhost::InputError("cannot use the folder '" + path + "': " + error.code().message());
  }
}

std::string OutputFolder::VideoPath() const {
  return (fs::path(m_path) / kVideoName).string();
}

std::string OutputFolder::FrameName(int index) const {
  const std::string number = std::to_string(index + 1);
  if (m_stream) return "frame " + number;
  const std::size_t digits = static_cast<std::size_t>(m_digits);
  return "frame_" + std::string(digits - std::min(digits, number.size()), '0') + number +
         (m_jpegQuality > 0 ? ".jpg" : ".png");
}

void OutputFolder::WriteFrame(int index, const cv::Mat& image) const {
  const std::string path = (fs::path(m_path) / FrameName(index)).string();
  std::vector<unsigned char> bytes;
  if (m_jpegQuality > 0) {
    cv::imencode(".jpg", image, bytes, {cv::IMWRITE_JPEG_QUALITY, m_jpegQuality});
  } else {
    cv::imencode(".png", image, bytes, {cv::IMWRITE_PNG_COMPRESSION, 1});
  }
  jqhost::WriteFileAtomically(path, bytes.data(), bytes.size());
}

void OutputFolder::WriteTruth(const std::vector<cv::Point>& corners) const {
  std::string text = "file,x,y\n";
  for (std::size_t i = 0; i < corners.size(); ++i) {
    text += FrameName(static_cast<int>(i)) + "," + std::to_string(corners[i].x) + "," +
            std::to_string(corners[i].y) + "\n";
  }
  jqhost::WriteFileAtomically((fs::path(m_path) / kTruthName).string(), text.data(), text.size());
}

}  // namespace jqstitch
