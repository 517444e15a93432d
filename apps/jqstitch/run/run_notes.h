#ifndef JQSTITCH_RUN_RUN_NOTES_H
#define JQSTITCH_RUN_RUN_NOTES_H

#include <string>

#include "host/output/picture.h"

namespace jqstitch {

/// Sentences of the summary that `batch` and `live` share.
inline std::string OutOfMemoryNote() {
  return "Stopped for want of memory; try a higher --detect-level";
}

/// Why the picture was not trimmed by the library; empty when it was.
inline std::string TrimNote(const jqhost::Picture& picture, bool trim) {
  if (!trim || picture.image.empty() || picture.isFirstFrame ||
      picture.trimmedBy == "content box") {
    return std::string();
  }
  return "Trimmed to the placed frames, because the library's own box does not hold all of them";
}

}  // namespace jqstitch

#endif  // JQSTITCH_RUN_RUN_NOTES_H
