#ifndef JQHOST_SYSTEM_PROCESS_MEMORY_H
#define JQHOST_SYSTEM_PROCESS_MEMORY_H

#include <cstdint>

namespace jqhost {

/// Bytes of memory that this process holds at the moment; 0 when the system does not
/// tell.
std::int64_t ResidentBytes();

}  // namespace jqhost

#endif  // JQHOST_SYSTEM_PROCESS_MEMORY_H
