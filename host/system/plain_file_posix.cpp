#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <filesystem>

#include "host/system/descriptor_posix.h"
#include "host/system/plain_file.h"

namespace jqhost {
FileKind KindOfFile(const std::string& path, std::error_code& error) {
  error.clear();
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) {
    if (errno == ENOENT) return FileKind::kMissing;
    error = LastError();
    return FileKind::kUnknown;
  }
  if (S_ISREG(status.st_mode)) return FileKind::kPlain;
  if (S_ISDIR(status.st_mode)) return FileKind::kFolder;
  return S_ISFIFO(status.st_mode) ? FileKind::kPipe : FileKind::kOther;
}

std::size_t LongestFileName() {
  return NAME_MAX;
}

NewFile::~NewFile() {
  if (m_file >= 0) close(m_file);
}

std::error_code NewFile::Create(const std::string& path) {
  m_file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  return m_file < 0 ? LastError() : std::error_code();
}

std::error_code NewFile::Write(const void* bytes, std::size_t size) {
  return WriteAll(m_file, bytes, size);
}

std::error_code NewFile::FlushAndClose() {
  if (const std::error_code error = FlushDescriptor(m_file)) return error;
  const int file = m_file;
  m_file = -1;
  return close(file) != 0 && errno != EINTR ? LastError() : std::error_code();
}

void NewFile::CopyRights(const std::string& from) {
  struct stat status {};
  if (stat(from.c_str(), &status) != 0) return;
  if (fchmod(m_file, status.st_mode & 07777) != 0) errno = 0;
}

std::error_code ReplaceFile(const std::string& from, const std::string& to) {
  if (rename(from.c_str(), to.c_str()) != 0) return LastError();
  const std::filesystem::path folder = std::filesystem::path(to).parent_path();
  const int file = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (file >= 0) {
    fsync(file);
    close(file);
  }
  return std::error_code();
}

std::error_code ExchangeFolders(const std::string& a, const std::string& b) {
  if (renameat2(AT_FDCWD, a.c_str(), AT_FDCWD, b.c_str(), RENAME_EXCHANGE) == 0) {
    return std::error_code();
  }
  // Some file systems do not know the exchange.
  if (errno != EINVAL && errno != ENOSYS) return LastError();
  const std::string aside = a + ".old";
  if (rename(b.c_str(), aside.c_str()) != 0) return LastError();
  if (rename(a.c_str(), b.c_str()) != 0) {
    const std::error_code error = LastError();
    return rename(aside.c_str(), b.c_str()) != 0 ? LastError() : error;
  }
  return rename(aside.c_str(), a.c_str()) != 0 ? LastError() : std::error_code();
}

void FlushDisk(const std::string& folder) {
  const int file = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (file < 0) return;
  syncfs(file);
  close(file);
}

void RemoveFile(const std::string& path) {
  unlink(path.c_str());
}

std::int64_t ProcessNumber() {
  return getpid();
}

bool IsProcessRunning(std::int64_t number) {
  // A process of somebody else cannot be signalled, but is there.
  return number > 0 && number <= INT_MAX &&
         (kill(static_cast<pid_t>(number), 0) == 0 || errno == EPERM);
}

}  // namespace jqhost
