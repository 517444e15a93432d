#include <fstream>
#include <string>

#include "host/system/free_memory.h"

namespace jqhost {

std::uint64_t FreeMemory() {
  std::ifstream stream("/proc/meminfo");
  std::string name, unit;
  for (std::uint64_t kilobytes = 0; stream >> name >> kilobytes;) {
    if (name == "MemAvailable:") return kilobytes * 1024;
    std::getline(stream, unit);
  }
  return 0;
}

}  // namespace jqhost
