#ifndef JQHOST_JOURNAL_JOURNAL_ENTRIES_H
#define JQHOST_JOURNAL_JOURNAL_ENTRIES_H

#include <cstdint>
#include <nlohmann/json.hpp>
#include <opencv2/core.hpp>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/output/save_options.h"
#include "host/source/sample_depth.h"
#include "host/verdict/frame_result.h"

namespace jqhost {

// What the log of a journal tells, one entry a line. Frames and places to go on from
// share one count, from 1. Places are those of top-left corners in pixels of the
// working scale, with the first frame's corner at (0, 0).

/// A frame was placed. Its pixels are in a file of its own, as the stitcher got them.
struct FrameEntry {
  int number = 0;
  std::uint64_t bytes = 0;  ///< of the file
  std::uint32_t crc = 0;    ///< CRC-32 of these bytes
  cv::Size size;            ///< of the frame in camera pixels
  /// Name, number in its source, place (`position`), offset and the other numbers.
  FrameResult result;
  SampleSummary samples;  ///< of all frames up to this one

  /// How the mosaic came out, against which a rebuilt one is checked; (0, 0) for the
  /// first frame, which starts no mosaic yet.
  cv::Size mosaic;
  cv::Point position;  ///< of the frame in it
  cv::Point boxMin, boxMax;
};

/// The run goes on from a place in the mosaic, against which the next frame is measured.
struct ContinueEntry {
  int number = 0;
  cv::Point place;
};

/// A frame, or a place to go on from, was taken back.
struct UndoEntry {
  int number = 0;
};

/// The picture of all that stands before this line was saved.
struct PictureEntry {
  SaveOptions save;  ///< its path is absolute
  bool trim = true;
  std::vector<int> without;  ///< numbers that were left out of it
};

using JournalEntry = std::variant<FrameEntry, ContinueEntry, UndoEntry, PictureEntry>;

nlohmann::json EntryJson(const JournalEntry& entry);

/// Raises `InputError` naming the field that is missing or makes no sense.
JournalEntry ReadEntry(const nlohmann::json& object);

}  // namespace jqhost

#endif  // JQHOST_JOURNAL_JOURNAL_ENTRIES_H
