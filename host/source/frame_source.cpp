#include "host/source/frame_source.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <filesystem>
#include <opencv2/imgcodecs.hpp>
#include <utility>

#include "host/input_error.h"
#include "host/source/path_list.h"
#include "host/source/picture_pages.h"
#include "host/source/picture_reader.h"

namespace fs = std::filesystem;

namespace jqhost {
namespace {

class FileSource : public FrameSource {
 public:
  FileSource(std::vector<PictureId> pictures, std::int64_t maxPixels)
      : m_pictures(std::move(pictures)), m_maxPixels(maxPixels) {}

  bool Next(SourceFrame& frame, bool read) override {
    if (m_next == m_pictures.size()) return false;
    const PictureId& picture = m_pictures[m_next++];
    frame = SourceFrame();
    frame.name = NameOf(picture);
    frame.number = static_cast<int>(m_next);
    if (read) frame.image = ReadStored(picture, frame.why, m_maxPixels);
    return true;
  }

  int Total() const override { return static_cast<int>(m_pictures.size()); }
  bool IsFileList() const override { return true; }

 private:
  std::vector<PictureId> m_pictures;
  std::int64_t m_maxPixels;
  std::size_t m_next = 0;
};

bool IsNumber(const std::string& text) {
  return !text.empty() && text.size() < 4 &&
         std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c); });
}

// "rtsp://camera/stream" and the like: a name, then "://".
bool IsUrl(const std::string& text) {
  const std::size_t end = text.find("://");
  return end != std::string::npos && end > 1 &&
         std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end),
                     [](unsigned char c) { return std::isalnum(c); });
}

}  // namespace

std::unique_ptr<FrameSource> MakeFileSource(const std::vector<std::string>& files,
                                            std::int64_t maxPixels) {
  return std::make_unique<FileSource>(ExpandPages(files), maxPixels);
}

std::unique_ptr<FrameSource> OpenFrameSource(const std::vector<std::string>& source,
                                             const std::vector<std::string>& leftOut,
                                             std::int64_t maxPixels) {
  std::error_code error;
  if (source.size() == 1 && !fs::exists(source.front(), error) && IsNumber(source.front())) {
    return MakeVideoSource(std::string(), std::stoi(source.front()));
  }
  if (source.size() == 1 && IsUrl(source.front())) return MakeVideoSource(source.front(), 0);
  if (source.size() == 1 && fs::is_regular_file(source.front(), error)) {
    const std::string& path = source.front();
    const std::string why = WhyNotPicture(path, INT64_MAX);
    if (!why.empty() && fs::file_size(path, error) > 0) return MakeVideoSource(path, 0);
  }
  std::vector<std::string> files = ExpandFolders(source, leftOut);
  // A frame that turns out unusable is left out of a running series; a path that
  // names nothing is a slip of the hand.
  for (const std::string& file : files) {
    if (!fs::exists(file, error)) {
      throw InputError("cannot read '" + file + "': " +
                       (error && error != std::errc::no_such_file_or_directory
                            ? error.message()
                            : std::string("there is no such file")));
    }
  }
  if (files.size() == 1) {
    const std::string why = WhyNotPicture(files.front(), maxPixels);
    if (!why.empty()) throw InputError("cannot read '" + files.front() + "': " + why);
  }
  return MakeFileSource(files, maxPixels);
}

}  // namespace jqhost
