#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "picture/page_memory.h"

namespace jqstitching {

// Where nothing is known of the system, its heap decides whether a block has to be copied.

void* TakePages(std::size_t bytes) {
  return std::calloc(1, bytes);
}

void* ResizePages(void* block, std::size_t from, std::size_t to) {
  void* const moved = std::realloc(block, to);
  if (moved == nullptr) return to < from ? block : nullptr;
  if (to > from) std::memset(static_cast<std::uint8_t*>(moved) + from, 0, to - from);
  return moved;
}

void ExpectWrites(void*, std::size_t) {}

void ReturnPages(void* block, std::size_t) {
  std::free(block);
}

}  // namespace jqstitching
