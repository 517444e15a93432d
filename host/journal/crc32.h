#ifndef JQHOST_JOURNAL_CRC32_H
#define JQHOST_JOURNAL_CRC32_H

#include <cstddef>
#include <cstdint>

namespace jqhost {

/// CRC-32 of a run of bytes as PNG, ZIP and Ethernet have it: polynomial 0x04C11DB7,
/// bits taken lowest first, start and end inverted. Of "123456789" it is CBF43926.
std::uint32_t Crc32(const void* bytes, std::size_t size);

}  // namespace jqhost

#endif  // JQHOST_JOURNAL_CRC32_H
