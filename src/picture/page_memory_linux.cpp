#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>

#include "picture/page_memory.h"

namespace jqstitching {
namespace {

std::size_t PageSize() {
  static const std::size_t size = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  return size;
}

// Bytes of the whole pages that hold a block; 0 where no address space holds them.
std::size_t WholePages(std::size_t bytes) {
  const std::size_t partial = PageSize() - 1;
  return bytes > SIZE_MAX - partial ? 0 : (bytes + partial) & ~partial;
}

}  // namespace

void* TakePages(std::size_t bytes) {
  const std::size_t mapped = WholePages(bytes);
  if (mapped == 0) return nullptr;
  void* block = mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return block == MAP_FAILED ? nullptr : block;
}

void* ResizePages(void* block, std::size_t from, std::size_t to) {
  const std::size_t mapped = WholePages(to);
  if (mapped == 0) return nullptr;
  if (to < from) {
    // The rest of the last page is 0 for a block that is made longer later on.
    std::memset(static_cast<std::uint8_t*>(block) + to, 0, mapped < from ? mapped - to : from - to);
  }
  if (mapped == WholePages(from)) return block;
  void* moved = mremap(block, WholePages(from), mapped, MREMAP_MAYMOVE);
  if (moved != MAP_FAILED) return moved;
  // The system gives up no pages only where it cannot split its own record of them. They
  // stay taken until the process ends.
  return to < from ? block : nullptr;
}

void ExpectWrites(void* from, std::size_t bytes) {
#ifdef MADV_POPULATE_WRITE
  // Whole pages only. Where the kernel is too old for it, each page comes when it is written.
  const std::size_t before = -reinterpret_cast<std::uintptr_t>(from) % PageSize();
  if (bytes <= before) return;
  madvise(static_cast<std::uint8_t*>(from) + before, (bytes - before) / PageSize() * PageSize(),
          MADV_POPULATE_WRITE);
#else
  static_cast<void>(from), static_cast<void>(bytes);
#endif
}

void ReturnPages(void* block, std::size_t bytes) {
  munmap(block, WholePages(bytes));
}

}  // namespace jqstitching
