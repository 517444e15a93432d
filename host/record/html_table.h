#ifndef JQHOST_RECORD_HTML_TABLE_H
#define JQHOST_RECORD_HTML_TABLE_H

#include <string>
#include <vector>

#include "host/record/words.h"

namespace jqhost {

/// A row per frame: number, small picture, name, what became of it, and the numbers.
/// @param names one per frame
std::string HtmlTable(const RunRecord& record, const std::vector<std::string>& names,
                      const Words& words);

}  // namespace jqhost

#endif  // JQHOST_RECORD_HTML_TABLE_H
