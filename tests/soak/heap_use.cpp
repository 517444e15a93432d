#include "heap_use.h"

#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>

namespace {

std::atomic<long> g_blocks{0};

void* Taken(void* block) {
  if (block != nullptr) g_blocks.fetch_add(1, std::memory_order_relaxed);
  return block;
}

}  // namespace

// The names under which glibc keeps its allocator for programs that replace it.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
}

#define JQ_REPLACES extern "C" __attribute__((visibility("default")))

JQ_REPLACES void* malloc(std::size_t size) noexcept {
  return Taken(__libc_malloc(size));
}

JQ_REPLACES void* calloc(std::size_t count, std::size_t size) noexcept {
  return Taken(__libc_calloc(count, size));
}

JQ_REPLACES void* realloc(void* block, std::size_t size) noexcept {
  void* moved = __libc_realloc(block, size);
  // A block that moves stays one block; a size of 0 frees it.
  if (block == nullptr) return Taken(moved);
  if (size == 0) g_blocks.fetch_sub(1, std::memory_order_relaxed);
  return moved;
}

JQ_REPLACES void* memalign(std::size_t alignment, std::size_t size) noexcept {
  return Taken(__libc_memalign(alignment, size));
}

JQ_REPLACES void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
  return Taken(__libc_memalign(alignment, size));
}

JQ_REPLACES int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
  void* taken = Taken(__libc_memalign(alignment, size));
  if (taken == nullptr) return ENOMEM;
  *block = taken;
  return 0;
}

JQ_REPLACES void free(void* block) noexcept {
  if (block != nullptr) g_blocks.fetch_sub(1, std::memory_order_relaxed);
  __libc_free(block);
}

HeapUse HeapUse::Now() {
  HeapUse use;
  use.blocks = g_blocks.load();
  long total = 0, resident = 0;
  if (std::FILE* file = std::fopen("/proc/self/statm", "r")) {
    if (std::fscanf(file, "%ld %ld", &total, &resident) != 2) total = resident = 0;
    std::fclose(file);
  }
  const std::size_t page = static_cast<std::size_t>(getpagesize());
  use.residentBytes = static_cast<std::size_t>(resident) * page;
  use.addressBytes = static_cast<std::size_t>(total) * page;
  return use;
}
