#include "host/system/descriptor_posix.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace jqhost {
namespace {

// A call takes no more than this at once on some systems.
constexpr std::size_t kLargestWrite = std::size_t{1} << 30;

}  // namespace

std::error_code LastError() {
  return std::error_code(errno, std::generic_category());
}

std::error_code WriteAll(int file, const void* bytes, std::size_t size) {
  const char* next = static_cast<const char*>(bytes);
  while (size > 0) {
    const ssize_t written = write(file, next, std::min(size, kLargestWrite));
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return LastError();
    next += written;
    size -= static_cast<std::size_t>(written);
  }
  return std::error_code();
}

std::error_code FlushDescriptor(int file) {
  while (fsync(file) != 0) {
    if (errno == EINVAL || errno == ENOTSUP) break;
    if (errno != EINTR) return LastError();
  }
  return std::error_code();
}

}  // namespace jqhost
