#ifndef JQ_TESTS_SOAK_HEAP_USE_H
#define JQ_TESTS_SOAK_HEAP_USE_H

#include <cstddef>

/// Memory of this process. The number of blocks includes every malloc, calloc and
/// aligned allocation that has not been freed, by whatever library; the address space also
/// what was taken from the system by pages.
struct HeapUse {
  long blocks = 0;
  std::size_t residentBytes = 0;
  std::size_t addressBytes = 0;

  static HeapUse Now();
};

#endif  // JQ_TESTS_SOAK_HEAP_USE_H
