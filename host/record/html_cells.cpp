#include "host/record/html_cells.h"

#include "host/record/html_text.h"

namespace jqhost {

std::string HtmlCell(const std::string& content) {
  return "<td>" + content + "</td>";
}

std::string HtmlNumberCell(const std::string& content) {
  return "<td class=\"n\">" + content + "</td>";
}

std::string HtmlNumberHead(const char* text) {
  return std::string("<th class=\"n\">") + text + "</th>";
}

std::string HtmlThumbnailCell(const std::vector<unsigned char>& jpeg) {
  return HtmlCell(
      jpeg.empty() ? "" : "<img loading=\"lazy\" alt=\"\" src=\"" + JpegSource(jpeg) + "\">");
}

}  // namespace jqhost
