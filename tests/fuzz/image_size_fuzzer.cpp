// The size check beside the image library's own reader: whatever a file holds, the
// check accepts it exactly when the reader makes a picture of it, and accepts two
// files exactly when their pictures have one size.

#include <sys/mman.h>
#include <unistd.h>

#include <QString>
#include <cstdlib>
#include <opencv2/core/utils/logger.hpp>
#include <opencv2/imgcodecs.hpp>
#include <string>

#include "jqimageconvert.h"
#include "limited_matrices.h"
#include "require.h"

namespace {

// A file in memory, which has a path like any other.
class MemoryFile {
 public:
  MemoryFile(const std::uint8_t* data, std::size_t size) : m_file(memfd_create("input", 0)) {
    Require(m_file >= 0 && write(m_file, data, size) == static_cast<ssize_t>(size),
            "the input can be written");
  }
  ~MemoryFile() { close(m_file); }
  std::string path() const { return "/proc/self/fd/" + std::to_string(m_file); }

 private:
  int m_file;
};

cv::Size ReadSize(const std::string& path) {
  try {
    return cv::imread(path, cv::IMREAD_COLOR).size();
  } catch (const cv::Exception&) {
    return {};
  }
}

bool IsMatched(std::initializer_list<std::string> paths) {
  QList<QString> files;
  for (const std::string& path : paths) files.append(QString::fromStdString(path));
  return IsImageSizeMatched(files);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // Readers that follow names inside a file to other files or hosts stay out.
  setenv("GDAL_SKIP", "VRT,WMS,WMTS,WCS,HTTP,DERIVED", 0);
  cv::utils::logging::setLogLevel(cv::utils::logging::LOG_LEVEL_SILENT);
  cv::setNumThreads(1);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  LimitedMatrices matrices(std::size_t{16} << 20);
  const MemoryFile file(data, size);
  const cv::Size read = ReadSize(file.path());
  // A picture too large for this test: what the reader would make of it is not known.
  if (matrices.takeRefused()) return -1;

  const bool accepted = IsMatched({file.path()});
  Require(accepted == (read.area() > 0), "the check accepts what the reader can read");
  if (!accepted) return 0;

  Require(IsMatched({file.path(), file.path()}), "a file has the size of itself");
  // An uncompressed picture of the size that the reader found, and one of another.
  for (const int wider : {0, 1}) {
    const std::string header =
        "P5 " + std::to_string(read.width + wider) + " " + std::to_string(read.height) + " 255\n";
    const std::string grey = header + std::string((read.width + wider) * read.height, 'g');
    const MemoryFile other(reinterpret_cast<const std::uint8_t*>(grey.data()), grey.size());
    Require(IsMatched({other.path()}), "a plain grey picture can be read");
    Require(IsMatched({file.path(), other.path()}) == (wider == 0),
            "the size is the one that the reader found");
  }
  return 0;
}
