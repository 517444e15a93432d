#ifndef JQHOST_SYSTEM_APPEND_FILE_H
#define JQHOST_SYSTEM_APPEND_FILE_H

#include <cstdint>
#include <string>
#include <system_error>

namespace jqhost {

/// A file that only grows at its end.
class AppendFile {
 public:
  AppendFile() = default;
  ~AppendFile();
  AppendFile(const AppendFile&) = delete;
  AppendFile& operator=(const AppendFile&) = delete;

  /// Opens the file, or makes it, and cuts it to `length` bytes if it is longer.
  std::error_code Open(const std::string& path, std::uint64_t length);
  std::error_code Append(const void* bytes, std::size_t size);
  /// Brings the bytes to the disk.
  std::error_code Flush();

 private:
  int m_file = -1;
};

/// Writes a file anew, in place of one of that name, without flushing it.
std::error_code WriteWholeFile(const std::string& path, const void* bytes, std::size_t size);

/// Brings a file, or the names in a folder, to the disk.
std::error_code FlushFile(const std::string& path);

/// Keeps other processes from a file while it exists. The system takes it off a process
/// that ends in whatever way.
class FileLock {
 public:
  FileLock() = default;
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

  /// @param alone else others may hold the lock too, provided that none wants it alone
  /// @return `device_or_resource_busy` where another process holds it
  std::error_code Take(const std::string& path, bool alone);

 private:
  int m_file = -1;
};

}  // namespace jqhost

#endif  // JQHOST_SYSTEM_APPEND_FILE_H
