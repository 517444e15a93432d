#ifndef JQHOST_SYSTEM_TEMPORARY_FOLDER_H
#define JQHOST_SYSTEM_TEMPORARY_FOLDER_H

#include <string>

namespace jqhost {

/// A folder of its own in the system's place for temporary files, readable by
/// nobody else, removed with everything in it at the end. Its name tells the
/// process; what a killed process left is removed when the next one is made.
class TemporaryFolder {
 public:
  /// Raises `InputError`.
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::string& Path() const { return m_path; }

 private:
  std::string m_path;
};

}  // namespace jqhost

#endif  // JQHOST_SYSTEM_TEMPORARY_FOLDER_H
