#ifndef JQ_BENCH_REPORT_HEAP_COUNT_H
#define JQ_BENCH_REPORT_HEAP_COUNT_H

#include <cstddef>

namespace jqbench {

/// The program's own heap, counted at every malloc and free whoever calls them.
/// Sanitizers bring their own heap; there nothing is counted.
bool HeapIsCounted();

std::size_t HeapLive();  ///< bytes in use
std::size_t HeapPeak();  ///< the most that were in use since `HeapRestartPeak`
void HeapRestartPeak();

}  // namespace jqbench

#endif  // JQ_BENCH_REPORT_HEAP_COUNT_H
