#ifndef JQHOST_SYSTEM_PINNED_FILE_H
#define JQHOST_SYSTEM_PINNED_FILE_H

#include <string>
#include <system_error>

#include "host/system/plain_file.h"

namespace jqhost {

/// Holds a file open so that it can be read again under `Path`, whatever takes its
/// name in the meantime: another file, or a pipe, whose opening would wait for
/// ever. Its bytes can still change.
class PinnedFile {
 public:
  /// Never blocks. `Kind` tells what was found, `Error` why it could not be opened.
  explicit PinnedFile(const std::string& path);
  ~PinnedFile();
  PinnedFile(PinnedFile&& other) noexcept;
  PinnedFile(const PinnedFile&) = delete;
  PinnedFile& operator=(const PinnedFile&) = delete;

  FileKind Kind() const { return m_kind; }
  std::error_code Error() const { return m_error; }
  /// A path that leads to the pinned file; the name as given where the system has
  /// no such paths, or no room for one more open file.
  const std::string& Path() const { return m_path; }

 private:
  std::string m_path;
  FileKind m_kind = FileKind::kUnknown;
  std::error_code m_error;
  int m_file = -1;
};

/// Lets this process hold as many files open as the system allows at most. For
/// programs; a library does not change such limits.
void AllowManyOpenFiles();

}  // namespace jqhost

#endif  // JQHOST_SYSTEM_PINNED_FILE_H
