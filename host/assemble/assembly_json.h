#ifndef JQHOST_ASSEMBLE_ASSEMBLY_JSON_H
#define JQHOST_ASSEMBLE_ASSEMBLY_JSON_H

#include <nlohmann/json.hpp>

#include "host/assemble/assembly.h"

namespace jqhost {

/// How an assembly came out as a whole: counts of pairs, islands with the numbers of their
/// frames (from 1), loop closure.
nlohmann::json AssemblySummaryJson(const Assembly& assembly);

/// The same with every frame that could be used, and every pair that was looked at closely;
/// of the others (frames that have nothing in common, mostly) there is only the number.
nlohmann::json AssemblyJson(const Assembly& assembly);

}  // namespace jqhost

#endif  // JQHOST_ASSEMBLE_ASSEMBLY_JSON_H
