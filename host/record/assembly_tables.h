#ifndef JQHOST_RECORD_ASSEMBLY_TABLES_H
#define JQHOST_RECORD_ASSEMBLY_TABLES_H

#include <string>
#include <vector>

#include "host/record/words.h"

namespace jqhost {

// All of a record whose assembly is there. Frames go by their numbers, as in the map.

/// The frames that hold together apart from the picture; empty where there are none.
std::string HtmlIslands(const RunRecord& record);

/// A row per frame: what became of it, its place, island and pairs.
/// @param names one per frame
std::string HtmlAssembledFrames(const RunRecord& record, const std::vector<std::string>& names,
                                const Words& words);

/// How many pairs count and how well loops close, a row per pair with enough matches, and in
/// one sentence how many others there are.
std::string HtmlPairs(const RunRecord& record);

}  // namespace jqhost

#endif  // JQHOST_RECORD_ASSEMBLY_TABLES_H
