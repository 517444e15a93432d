#ifndef JQHOST_SYSTEM_DESCRIPTOR_POSIX_H
#define JQHOST_SYSTEM_DESCRIPTOR_POSIX_H

#include <cstddef>
#include <system_error>

namespace jqhost {

/// `errno` as an error code.
std::error_code LastError();

/// Writes all the bytes to an open file descriptor, however often that is interrupted.
std::error_code WriteAll(int file, const void* bytes, std::size_t size);

/// Waits until the disk has what was written. Some file systems cannot tell, which is no
/// error.
std::error_code FlushDescriptor(int file);

}  // namespace jqhost

#endif  // JQHOST_SYSTEM_DESCRIPTOR_POSIX_H
