#include <unistd.h>

#include <fstream>

#include "host/system/process_memory.h"

namespace jqhost {

std::int64_t ResidentBytes() {
  // Total and resident size, in pages.
  std::ifstream file("/proc/self/statm");
  std::int64_t total = 0, resident = 0;
  if (!(file >> total >> resident)) return 0;
  return resident * sysconf(_SC_PAGESIZE);
}

}  // namespace jqhost
