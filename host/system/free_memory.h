#ifndef JQHOST_SYSTEM_FREE_MEMORY_H
#define JQHOST_SYSTEM_FREE_MEMORY_H

#include <cstdint>

namespace jqhost {

/// Bytes that programs can still take without paging; 0 when the system does not
/// tell.
std::uint64_t FreeMemory();

}  // namespace jqhost

#endif  // JQHOST_SYSTEM_FREE_MEMORY_H
