#ifndef JQHOST_RECORD_HTML_PAGE_H
#define JQHOST_RECORD_HTML_PAGE_H

namespace jqhost {

/// Style and script of the report, so that the page needs no other file.
extern const char* const kHtmlStyle;
extern const char* const kHtmlScript;

}  // namespace jqhost

#endif  // JQHOST_RECORD_HTML_PAGE_H
