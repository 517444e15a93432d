#ifndef JQHOST_SYSTEM_PLAIN_FILE_H
#define JQHOST_SYSTEM_PLAIN_FILE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <system_error>

namespace jqhost {

// Everything that the host asks of the operating system about files. Errors are
// those of std::generic_category, so that callers know no system's own numbers.

enum class FileKind { kMissing, kPlain, kFolder, kPipe, kOther, kUnknown };

/// What a path leads to, links followed. `kUnknown` with the cause in `error`
/// when the system does not tell.
FileKind KindOfFile(const std::string& path, std::error_code& error);

/// The most characters that a file name can have.
std::size_t LongestFileName();

/// A new file that is written once.
class NewFile {
 public:
  NewFile() = default;
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  /// Makes the file; `file_exists` when there is one of that name.
  std::error_code Create(const std::string& path);
  std::error_code Write(const void* bytes, std::size_t size);
  /// Brings the bytes to the disk and closes the file.
  std::error_code FlushAndClose();
  /// Takes over the access rights of a file that exists, as far as possible.
  void CopyRights(const std::string& from);

 private:
  int m_file = -1;
};

/// Moves a file within its folder over another one, in one step, and makes the
/// move last through a loss of power where the system can.
std::error_code ReplaceFile(const std::string& from, const std::string& to);

/// Lets two folders of one disk change names, in one step. Where the system cannot do
/// that, in two, between which nothing stands under the name `b`.
std::error_code ExchangeFolders(const std::string& a, const std::string& b);

/// Brings to the disk what was written on the disk of this folder.
void FlushDisk(const std::string& folder);

void RemoveFile(const std::string& path);

/// The number of this process, and whether one of that number is running.
std::int64_t ProcessNumber();
bool IsProcessRunning(std::int64_t number);

}  // namespace jqhost

#endif  // JQHOST_SYSTEM_PLAIN_FILE_H
