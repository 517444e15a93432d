#ifndef JQSTITCH_RUN_RUN_NOTES_H
#define JQSTITCH_RUN_RUN_NOTES_H

#include <cstdint>
#include <string>

#include "host/output/picture.h"
#include "host/record/run_record.h"

namespace jqstitch {

/// Sentences of the summary that `batch` and `live` share.
inline std::string OutOfMemoryNote() {
  return "Stopped for want of memory; try a higher --detect-level";
}

/// The same of a live run, which may have been given a limit in bytes (else 0).
inline std::string OutOfMemoryNote(std::int64_t needed, std::int64_t limit) {
  if (limit == 0 || needed <= limit) return OutOfMemoryNote();
  const auto megabytes = [](std::int64_t bytes) {
    return std::to_string((bytes + (1 << 20) - 1) >> 20) + " MB";
  };
  return "Stopped before the picture would take " + megabytes(needed) + ", more than the " +
         megabytes(limit) + " of --max-memory";
}

/// A video that gave fewer frames than it announced.
inline std::string EarlyEndNote(const jqhost::RunRecord& record) {
  return "The video ended after " + std::to_string(record.given) + " of the " +
         std::to_string(record.announced) + " frames that it announces; is it cut short?";
}

/// A video whose reader gives the high bytes of 16-bit samples.
inline std::string HighBytesNote() {
  return "The video has 16 bits a sample, of which only the 8 highest can be read: frames of a "
         "camera of 10, 12 or 14 bits turn dark; save them as 16-bit pictures instead (--depth)";
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
