#ifndef JQHOST_OUTPUT_ATOMIC_FILE_H
#define JQHOST_OUTPUT_ATOMIC_FILE_H

#include <cstddef>
#include <string>
#include <system_error>

#include "host/system/plain_file.h"

namespace jqhost {

/// A file that appears under its name complete or not at all.
///
/// The bytes go to ".jqstitch-PID-NUMBER.tmp.EXT" in the same folder; `Commit`
/// flushes them to the disk and renames. Without a commit the temporary file is
/// removed; only a killed program leaves one behind, and its name tells whose it
/// was. Every failure raises `InputError` with the path and the cause.
class AtomicFile {
 public:
  /// Makes the temporary file, which proves that the folder takes one. A symbolic
  /// link is followed, so that it stays a link.
  explicit AtomicFile(const std::string& path);
  ~AtomicFile();
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;

  void Write(const void* bytes, std::size_t size);
  void Commit();

  /// Where the bytes are until the commit, for writers that open the file themselves.
  const std::string& TemporaryPath() const { return m_temporary; }

 private:
  [[noreturn]] void Fail(std::error_code cause) const;

  std::string m_shown;   // as the user wrote it
  std::string m_target;  // links resolved
  std::string m_temporary;
  NewFile m_file;
};

/// Finds out whether a file can be written under this name, without leaving
/// anything there. Raises `InputError`.
void CheckWritable(const std::string& path);

/// Writes a whole file atomically.
void WriteFileAtomically(const std::string& path, const void* bytes, std::size_t size);

/// Removes the temporary files and folders beside `path` whose process is gone: a run
/// that was killed left them there.
void RemoveAbandonedTemporaries(const std::string& path);

/// So many temporary names beside one picture are tried.
constexpr int kMostTemporaries = 1000;

/// The temporary file that this process uses while it writes `path` and nothing
/// else, so that a program which must end at once knows what to remove. A higher number
/// where others are in use.
std::string TemporaryName(const std::string& path, int number = 1);

/// "cannot write 'PATH': CAUSE (ADVICE)", for all that writes outputs.
std::string WriteFailure(const std::string& path, std::error_code cause);

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_ATOMIC_FILE_H
