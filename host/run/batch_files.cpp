#include "host/run/batch_files.h"

#include <fstream>
#include <opencv2/imgcodecs.hpp>

#include "host/input_error.h"
#include "host/output/thumbnail.h"

namespace jqhost {
namespace {

// Formats without compression: the file is read twice and soon removed.
void WriteTemporary(const std::string& path, const cv::Mat& picture) {
  std::vector<unsigned char> bytes;
  cv::imencode(picture.channels() == 1 ? ".pgm" : ".ppm", picture, bytes);
  std::ofstream stream(path, std::ios::binary);
  stream.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
  stream.close();
  if (!stream) {
    throw InputError("cannot write the temporary file '" + path +
                     "' (is the disk full? TMPDIR names another place)");
  }
}

}  // namespace

BatchFiles::BatchFiles(const std::vector<PictureId>& pictures, FramePreparation& preparation,
                       std::int64_t maxPixels, const StopToken& stop, bool thumbnails)
    : m_thumbnails(thumbnails) {
  for (const PictureId& picture : pictures) {
    m_files.push_back(stop.Requested() ? BatchFile{NameOf(picture), picture.path, std::string()}
                                       : Prepare(picture, preparation, maxPixels));
  }
}

BatchFile BatchFiles::Prepare(const PictureId& picture, FramePreparation& preparation,
                              std::int64_t maxPixels) {
  BatchFile file{NameOf(picture), picture.path, std::string()};
  const cv::Mat stored = ReadStored(picture, file.why, maxPixels);
  if (stored.empty()) return file;
  const bool asItIs = picture.page == 0 && !preparation.Changes(stored);
  const cv::Mat prepared = preparation.Prepare(stored);
  file.reduced = ReduceFrame(prepared);
  if (m_thumbnails) file.thumbnail = Thumbnail(prepared);
  if (asItIs) return file;
  if (!m_folder) m_folder = std::make_unique<TemporaryFolder>();
  file.path = m_folder->Path() + "/" + std::to_string(m_files.size() + 1) + ".pnm";
  WriteTemporary(file.path, prepared);
  return file;
}

}  // namespace jqhost
