#ifndef JQ_BENCH_REPORT_PROCESS_H
#define JQ_BENCH_REPORT_PROCESS_H

#include <cstddef>
#include <string>

namespace jqbench {

/// Resident memory of the process in bytes, and the most of it since
/// `RestartPeakResident` (since the start where the system refuses that).
std::size_t Resident();
std::size_t PeakResident();
bool RestartPeakResident();

/// Gives back to the system what the heap keeps for later, where the system's heap can.
void TrimHeap();

/// Page faults served without reading a disk, since the start.
long MinorFaults();

/// Date, machine, image library, commit and command line, as Markdown.
std::string Circumstances(int argc, char** argv);

}  // namespace jqbench

#endif  // JQ_BENCH_REPORT_PROCESS_H
