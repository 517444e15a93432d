// Objects of more than 256 MB raise std::bad_alloc, as on a system short of memory;
// the sanitizer's own operator new would end the program.

#include <cstdlib>
#include <new>

namespace {

void* Allocate(std::size_t size) {
  void* block = size <= (std::size_t{256} << 20) ? std::malloc(size) : nullptr;
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

}  // namespace

void* operator new(std::size_t size) {
  return Allocate(size);
}
void* operator new[](std::size_t size) {
  return Allocate(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return std::malloc(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return std::malloc(size);
}
void operator delete(void* block) noexcept {
  std::free(block);
}
void operator delete[](void* block) noexcept {
  std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
  std::free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
  std::free(block);
}
