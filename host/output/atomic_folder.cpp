#include "host/output/atomic_folder.h"

#include <filesystem>

#include "host/input_error.h"
#include "host/output/atomic_file.h"
#include "host/system/plain_file.h"

namespace fs = std::filesystem;

namespace jqhost {
AtomicFolder::AtomicFolder(const std::string& target) {
  std::error_code error;
  for (int number = 1; number <= kMostTemporaries; ++number) {
    m_path = TemporaryName(target, number);
    if (fs::create_directory(m_path, error)) return;
    // Not made and no error: something of that name is in use by another save.
    if (error) break;
  }
  throw InputError(WriteFailure(target, error));
}

AtomicFolder::~AtomicFolder() {
  std::error_code ignored;
  fs::remove_all(m_path, ignored);
}

void AtomicFolder::Flush() const {
  FlushDisk(m_path);
}

}  // namespace jqhost
