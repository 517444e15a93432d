#include "report/heap_count.h"

#include <malloc.h>

#include <atomic>
#include <cerrno>

#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define JQ_BENCH_COUNTS_HEAP 1
#else
#define JQ_BENCH_COUNTS_HEAP 0
#endif

namespace {

std::atomic<std::size_t> g_live{0};
std::atomic<std::size_t> g_peak{0};

}  // namespace

#if JQ_BENCH_COUNTS_HEAP

// The names under which glibc keeps its allocator for programs that replace it.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
}

namespace {

void* Taken(void* block) {
  if (block == nullptr) return block;
  const std::size_t size = malloc_usable_size(block);
  const std::size_t live = g_live.fetch_add(size, std::memory_order_relaxed) + size;
  std::size_t peak = g_peak.load(std::memory_order_relaxed);
  while (live > peak && !g_peak.compare_exchange_weak(peak, live, std::memory_order_relaxed)) {
  }
  return block;
}

void Given(void* block) {
  if (block != nullptr) g_live.fetch_sub(malloc_usable_size(block), std::memory_order_relaxed);
}

}  // namespace

#define JQ_BENCH_REPLACES extern "C" __attribute__((visibility("default")))

JQ_BENCH_REPLACES void* malloc(std::size_t size) noexcept {
  return Taken(__libc_malloc(size));
}

JQ_BENCH_REPLACES void* calloc(std::size_t count, std::size_t size) noexcept {
  return Taken(__libc_calloc(count, size));
}

JQ_BENCH_REPLACES void* realloc(void* block, std::size_t size) noexcept {
  Given(block);
  void* moved = __libc_realloc(block, size);
  // A refused request leaves the old block where it is.
  if (moved == nullptr && size != 0) Taken(block);
  return Taken(moved);
}

JQ_BENCH_REPLACES void* memalign(std::size_t alignment, std::size_t size) noexcept {
  return Taken(__libc_memalign(alignment, size));
}

JQ_BENCH_REPLACES void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
  return Taken(__libc_memalign(alignment, size));
}

JQ_BENCH_REPLACES int posix_memalign(void** block, std::size_t alignment,
                                     std::size_t size) noexcept {
  void* taken = Taken(__libc_memalign(alignment, size));
  if (taken == nullptr) return ENOMEM;
  *block = taken;
  return 0;
}

JQ_BENCH_REPLACES void free(void* block) noexcept {
  Given(block);
  __libc_free(block);
}

#endif  // JQ_BENCH_COUNTS_HEAP

namespace jqbench {

bool HeapIsCounted() {
  return JQ_BENCH_COUNTS_HEAP != 0;
}

std::size_t HeapLive() {
  return g_live.load(std::memory_order_relaxed);
}

std::size_t HeapPeak() {
  return g_peak.load(std::memory_order_relaxed);
}

void HeapRestartPeak() {
  g_peak.store(HeapLive(), std::memory_order_relaxed);
}

}  // namespace jqbench
