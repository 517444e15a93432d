#ifndef JQHOST_RECORD_ASSEMBLY_TABLES_H
#define JQHOST_RECORD_ASSEMBLY_TABLES_H

#include <string>
#include <vector>

#include "host/record/words.h"

namespace jqhost {

// All of a record whose assembly is there. Frames go by their numbers, as in the map.

/// How many pairs count, how well loops close, and what holds together apart from the picture.
std::string HtmlAssemblyOutcome(const RunRecord& record);

/// A row per frame: what became of it, its place, island and pairs, and for a frame that
/// nothing holds the best pair that it had.
/// @param names one per frame
std::string HtmlAssembledFrames(const RunRecord& record, const std::vector<std::string>& names,
                                const Words& words);

/// A row per pair with enough matches, and in one sentence how many others there are.
std::string HtmlPairs(const RunRecord& record);

}  // namespace jqhost

#endif  // JQHOST_RECORD_ASSEMBLY_TABLES_H
