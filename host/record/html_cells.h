#ifndef JQHOST_RECORD_HTML_CELLS_H
#define JQHOST_RECORD_HTML_CELLS_H

#include <string>
#include <vector>

namespace jqhost {

/// Cells of a table; those of numbers stand on the right.
std::string HtmlCell(const std::string& content);
std::string HtmlNumberCell(const std::string& content);
std::string HtmlNumberHead(const char* text);

/// A frame's small picture, where there is one.
std::string HtmlThumbnailCell(const std::vector<unsigned char>& jpeg);

}  // namespace jqhost

#endif  // JQHOST_RECORD_HTML_CELLS_H
