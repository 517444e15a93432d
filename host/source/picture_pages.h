#ifndef JQHOST_SOURCE_PICTURE_PAGES_H
#define JQHOST_SOURCE_PICTURE_PAGES_H

#include <opencv2/core.hpp>
#include <string>
#include <vector>

#include "host/source/picture_reader.h"

namespace jqhost {

/// One picture of a file: the file itself, or one page of a TIFF that has several.
struct PictureId {
  std::string path;
  int page = 0;  ///< from 1; 0: the file has no other
};

/// "scan.png", "stack.tif page 3".
std::string NameOf(const PictureId& picture);

/// Every picture of the files, in their order. A file that cannot be read counts
/// as one picture: reading it tells why.
std::vector<PictureId> ExpandPages(const std::vector<std::string>& files);

/// The picture as stored: 8 or 16 bits, grey or blue-green-red, turned upright as
/// the camera noted. Empty, with the cause in `why`, when it cannot be read or its
/// samples are of another kind.
cv::Mat ReadStored(const PictureId& picture, std::string& why,
                   std::int64_t maxPixels = kMostPixels);

}  // namespace jqhost

#endif  // JQHOST_SOURCE_PICTURE_PAGES_H
