#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "host/input_error.h"
#include "host/system/plain_file.h"
#include "host/system/temporary_folder.h"

namespace fs = std::filesystem;

namespace jqhost {
namespace {

constexpr char kPrefix[] = "jqstitch-frames-";

// The folders of processes that are gone. What belongs to somebody else stays.
void RemoveLeftovers(const fs::path& place) {
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(place, error)) {
    const std::string name = entry.path().filename().string();
    if (name.rfind(kPrefix, 0) != 0) continue;
    const char* number = name.c_str() + sizeof kPrefix - 1;
    std::int64_t process = 0;
    const auto parsed = std::from_chars(number, name.c_str() + name.size(), process);
    if (parsed.ec != std::errc() || *parsed.ptr != '-' || IsProcessRunning(process)) continue;
    if (entry.is_directory(error) && !entry.is_symlink(error)) fs::remove_all(entry.path(), error);
  }
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
  std::error_code error;
  const fs::path place = fs::temp_directory_path(error);
  if (error) throw InputError("there is no folder for temporary files: " + error.message());
  RemoveLeftovers(place);
  m_path = (place / (kPrefix + std::to_string(ProcessNumber()) + "-XXXXXX")).string();
  if (mkdtemp(m_path.data()) == nullptr) {
    throw InputError("cannot make a folder for temporary files in '" + place.string() +
                     "': " + std::error_code(errno, std::generic_category()).message());
  }
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code error;
  fs::remove_all(m_path, error);
}

}  // namespace jqhost
