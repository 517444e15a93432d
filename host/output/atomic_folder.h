#ifndef JQHOST_OUTPUT_ATOMIC_FOLDER_H
#define JQHOST_OUTPUT_ATOMIC_FOLDER_H

#include <string>

namespace jqhost {

/// A folder whose content is made elsewhere on the same disk before it is moved to its
/// place. It lies beside the target as ".jqstitch-PID-NUMBER.tmp" and is removed with
/// everything in it at the end; a killed program leaves it behind, and the next run that
/// writes there removes it. Failures raise `InputError`.
class AtomicFolder {
 public:
  /// @param target file or folder beside which it is made
  explicit AtomicFolder(const std::string& target);
  ~AtomicFolder();
  AtomicFolder(const AtomicFolder&) = delete;
  AtomicFolder& operator=(const AtomicFolder&) = delete;

  const std::string& Path() const { return m_path; }

  /// Brings everything in it to the disk.
  void Flush() const;

 private:
  std::string m_path;
};

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_ATOMIC_FOLDER_H
