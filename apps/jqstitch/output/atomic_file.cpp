#include "output/atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "console/interrupt.h"
#include "input_error.h"

namespace fs = std::filesystem;

namespace jqstitch {
namespace {

constexpr std::size_t kLargestWrite = std::size_t{1} << 30;

std::string Advice(int cause) {
  switch (cause) {
    case ENOENT:
      return " (the folder is not there; make it first)";
    case ENOTDIR:
      return " (a part of the path is a file, not a folder)";
    case ENOSPC:
    case EDQUOT:
      return " (free some space, or choose another disk)";
    case EACCES:
    case EPERM:
    case EROFS:
      return " (choose a folder that you may write to)";
    case ENAMETOOLONG:
      return " (choose a shorter name)";
    default:
      return "";
  }
}

// Where a link leads, also when nothing is there yet.
std::string Resolve(const std::string& path) {
  std::error_code error;
  fs::path target(path);
  for (int hops = 0; hops < 40 && fs::is_symlink(target, error); ++hops) {
    const fs::path next = fs::read_symlink(target, error);
    if (error) break;
    target = next.is_absolute() ? next : target.parent_path() / next;
  }
  return target.string();
}

void FlushFolder(const fs::path& folder) {
  const int file = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (file < 0) return;
  fsync(file);
  close(file);
}

fs::path FolderOf(const std::string& path) {
  const fs::path folder = fs::path(path).parent_path();
  return folder.empty() ? fs::path(".") : folder;
}

}  // namespace

void AtomicFile::Fail(int cause) const {
  throw InputError("cannot write '" + m_shown + "': " + std::strerror(cause) + Advice(cause));
}

AtomicFile::AtomicFile(const std::string& path) : m_shown(path), m_target(Resolve(path)) {
  const std::string name = fs::path(m_target).filename().string();
  if (path.empty() || name.empty() || name == "." || name == "..") {
    throw InputError("cannot write '" + m_shown + "': it names no file");
  }
  struct stat status {};
  if (stat(m_target.c_str(), &status) == 0) {
    if (S_ISDIR(status.st_mode)) {
      throw InputError("cannot write '" + m_shown + "': it is a folder (add a file name)");
    }
    // A rename would put a plain file in the place of the pipe or device.
    if (!S_ISREG(status.st_mode)) {
      throw InputError("cannot write '" + m_shown + "': it is not a plain file");
    }
  } else if (errno != ENOENT) {
    Fail(errno);
  }
  if (name.size() > NAME_MAX) Fail(ENAMETOOLONG);

  std::string extension = fs::path(name).extension().string();
  if (extension.size() > 16) extension.clear();
  for (int number = 1;; ++number) {
    m_temporary = (FolderOf(m_target) / (".jqstitch-" + std::to_string(getpid()) + "-" +
                                         std::to_string(number) + ".tmp" + extension))
                      .string();
    m_file = open(m_temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (m_file >= 0) break;
    if (errno != EEXIST || number == 1000) Fail(errno);
  }
  SetFileToRemoveOnExit(m_temporary.c_str());
  // The mode of a file that is replaced is kept; a failure to do so is no loss.
  if (S_ISREG(status.st_mode) && fchmod(m_file, status.st_mode & 07777) != 0) errno = 0;
}

AtomicFile::~AtomicFile() {
  if (m_file >= 0) close(m_file);
  if (!m_temporary.empty()) unlink(m_temporary.c_str());
  SetFileToRemoveOnExit(nullptr);
}

void AtomicFile::Write(const void* bytes, std::size_t size) {
  const char* next = static_cast<const char*>(bytes);
  while (size > 0) {
    const ssize_t written = write(m_file, next, std::min(size, kLargestWrite));
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) Fail(errno);
    next += written;
    size -= static_cast<std::size_t>(written);
  }
}

void AtomicFile::Commit() {
  // Some file systems have no fsync; that is no reason to lose the file.
  while (fsync(m_file) != 0) {
    if (errno == EINVAL || errno == ENOTSUP) break;
    if (errno != EINTR) Fail(errno);
  }
  const int file = m_file;
  m_file = -1;
  if (close(file) != 0 && errno != EINTR) Fail(errno);
  if (rename(m_temporary.c_str(), m_target.c_str()) != 0) Fail(errno);
  m_temporary.clear();
  FlushFolder(FolderOf(m_target));
}

void CheckWritable(const std::string& path) {
  AtomicFile probe(path);
}

void WriteFileAtomically(const std::string& path, const void* bytes, std::size_t size) {
  AtomicFile file(path);
  file.Write(bytes, size);
  file.Commit();
}

}  // namespace jqstitch
