#ifndef JQSTITCH_WORDS_ASSEMBLY_WORDS_H
#define JQSTITCH_WORDS_ASSEMBLY_WORDS_H

#include <string>
#include <vector>

#include "host/record/run_record.h"

namespace jqstitch {

/// Why a frame of a set in any order is not in the picture, with the best pair it had.
std::string UnconnectedReason(const jqhost::RunRecord& record, const jqhost::FrameResult& frame);

/// How a set of frames was put together, for the summary: pairs, loops, islands.
/// @param allIslands whether each island is written, not only the largest
std::vector<std::string> AssemblyNotes(const jqhost::Assembly& assembly, bool allIslands);

}  // namespace jqstitch

#endif  // JQSTITCH_WORDS_ASSEMBLY_WORDS_H
