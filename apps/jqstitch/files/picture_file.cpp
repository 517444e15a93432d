#include "files/picture_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <opencv2/imgcodecs.hpp>
#include <stdexcept>

namespace fs = std::filesystem;

namespace jqstitch {
namespace {

[[noreturn]] void Fail(const std::string& path, int cause) {
  throw std::runtime_error("cannot write '" + path + "': " + std::strerror(cause));
}

// 0 or the errno of the call that failed.
int WriteAll(int file, const void* bytes, std::size_t size) {
  const char* next = static_cast<const char*>(bytes);
  while (size > 0) {
    const ssize_t written = ::write(file, next, size);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    next += written;
    size -= static_cast<std::size_t>(written);
  }
  return 0;
}

// Of two causes the first.
int CloseAfter(int cause, int file) {
  const int closing = ::close(file) == 0 ? 0 : errno;
  return cause != 0 ? cause : closing;
}

void WriteDirectly(const std::string& path, const void* bytes, std::size_t size) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
  if (file < 0) Fail(path, errno);
  const int cause = CloseAfter(WriteAll(file, bytes, size), file);
  if (cause != 0) Fail(path, cause);
}

// The access that a newly made file would have.
mode_t UsualMode() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

}  // namespace

void WriteFileWhole(const std::string& path, const void* bytes, std::size_t size) {
  struct stat existing;
  const bool exists = ::stat(path.c_str(), &existing) == 0;
  if (exists && S_ISDIR(existing.st_mode)) Fail(path, EISDIR);
  if (exists && !S_ISREG(existing.st_mode)) return WriteDirectly(path, bytes, size);

  // A short name of its own: the path with an ending could be too long.
  std::string temporary = (fs::path(path).parent_path() / ".jqstitch-XXXXXX").string();
  const int file = ::mkstemp(temporary.data());
  if (file < 0) Fail(path, errno);
  int cause = WriteAll(file, bytes, size);
  if (cause == 0 && ::fchmod(file, exists ? existing.st_mode & 07777 : UsualMode()) != 0) {
    cause = errno;
  }
  if (cause == 0 && ::fsync(file) != 0) cause = errno;
  cause = CloseAfter(cause, file);
  if (cause == 0 && ::rename(temporary.c_str(), path.c_str()) != 0) cause = errno;
  if (cause != 0) {
    ::unlink(temporary.c_str());
    Fail(path, cause);
  }
}

void CheckPictureExtension(const std::string& path) {
  bool known = false;
  try {
    known = cv::haveImageWriter(path);
  } catch (const cv::Exception&) {
    known = false;
  }
  if (!known) {
    throw std::runtime_error("cannot write '" + path + "': its extension '" +
                             fs::path(path).extension().string() +
                             "' stands for no picture format (try .png)");
  }
}

void WritePicture(const std::string& path, const cv::Mat& picture,
                  const std::vector<int>& parameters) {
  CheckPictureExtension(path);
  std::vector<unsigned char> bytes;
  bool encoded = false;
  std::string cause = "the picture cannot be encoded";
  try {
    encoded = cv::imencode(fs::path(path).extension().string(), picture, bytes, parameters);
  } catch (const cv::Exception& error) {
    cause = error.err;
  }
  if (!encoded) throw std::runtime_error("cannot write '" + path + "': " + cause);
  WriteFileWhole(path, bytes.data(), bytes.size());
}

}  // namespace jqstitch
