#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "host/system/append_file.h"
#include "host/system/descriptor_posix.h"

namespace jqhost {
AppendFile::~AppendFile() {
  if (m_file >= 0) close(m_file);
}

std::error_code AppendFile::Open(const std::string& path, std::uint64_t length) {
  m_file = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
  struct stat status {};
  if (m_file < 0 || fstat(m_file, &status) != 0) return LastError();
  if (static_cast<std::uint64_t>(status.st_size) <= length) return std::error_code();
  return ftruncate(m_file, static_cast<off_t>(length)) == 0 ? std::error_code() : LastError();
}

std::error_code AppendFile::Append(const void* bytes, std::size_t size) {
  return WriteAll(m_file, bytes, size);
}

std::error_code AppendFile::Flush() {
  return FlushDescriptor(m_file);
}

std::error_code WriteWholeFile(const std::string& path, const void* bytes, std::size_t size) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (file < 0) return LastError();
  const std::error_code error = WriteAll(file, bytes, size);
  const bool closed = close(file) == 0 || errno == EINTR;
  if (error) return error;
  return closed ? std::error_code() : LastError();
}

std::error_code FlushFile(const std::string& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return LastError();
  const std::error_code error = FlushDescriptor(file);
  close(file);
  return error;
}

FileLock::~FileLock() {
  if (m_file >= 0) close(m_file);
}

std::error_code FileLock::Take(const std::string& path, bool alone) {
  m_file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (m_file < 0) return LastError();
  if (flock(m_file, (alone ? LOCK_EX : LOCK_SH) | LOCK_NB) == 0) return std::error_code();
  if (errno == EWOULDBLOCK) return std::make_error_code(std::errc::device_or_resource_busy);
  // A file system without locks is no reason to refuse the journal.
  if (errno == ENOLCK || errno == EOPNOTSUPP || errno == ENOSYS) return std::error_code();
  return LastError();
}

}  // namespace jqhost
