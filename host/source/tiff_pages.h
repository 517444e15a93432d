#ifndef JQHOST_SOURCE_TIFF_PAGES_H
#define JQHOST_SOURCE_TIFF_PAGES_H

#include <string>

namespace jqhost {

/// The pages of a TIFF by its chain of directories; 0 when the file is none. A
/// directory that lies beyond the end of the file counts, so that a file cut short
/// is told by a page that cannot be read and not by pages that are silently missing.
int CountTiffPages(const std::string& path);

}  // namespace jqhost

#endif  // JQHOST_SOURCE_TIFF_PAGES_H
