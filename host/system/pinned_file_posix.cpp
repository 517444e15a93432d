#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <utility>

#include "host/system/pinned_file.h"

namespace jqhost {
namespace {

FileKind KindOfMode(mode_t mode) {
  if (S_ISREG(mode)) return FileKind::kPlain;
  if (S_ISDIR(mode)) return FileKind::kFolder;
  return S_ISFIFO(mode) ? FileKind::kPipe : FileKind::kOther;
}

}  // namespace

PinnedFile::PinnedFile(const std::string& path) : m_path(path) {
  m_file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (m_file < 0) {
    const int cause = errno;
    m_kind = KindOfFile(path, m_error);
    // Without room for one more open file the name has to do.
    const bool full = cause == EMFILE || cause == ENFILE;
    if (m_kind == FileKind::kPlain && !full) {
      m_error = std::error_code(cause, std::generic_category());
    }
    return;
  }
  struct stat status {};
  if (fstat(m_file, &status) != 0) {
    m_error = std::error_code(errno, std::generic_category());
    return;
  }
  m_kind = KindOfMode(status.st_mode);
  const std::string pinned = "/proc/self/fd/" + std::to_string(m_file);
  std::error_code error;
  if (m_kind == FileKind::kPlain && std::filesystem::exists(pinned, error)) m_path = pinned;
}

PinnedFile::~PinnedFile() {
  if (m_file >= 0) close(m_file);
}

PinnedFile::PinnedFile(PinnedFile&& other) noexcept
    : m_path(std::move(other.m_path)),
      m_kind(other.m_kind),
      m_error(other.m_error),
      m_file(std::exchange(other.m_file, -1)) {}

void AllowManyOpenFiles() {
  rlimit limit{};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_NOFILE, &limit);
}

}  // namespace jqhost
