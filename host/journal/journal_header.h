#ifndef JQHOST_JOURNAL_JOURNAL_HEADER_H
#define JQHOST_JOURNAL_JOURNAL_HEADER_H

#include <string>
#include <vector>

#include "host/run/stitch_settings.h"
#include "host/source/frame_preparation.h"

namespace jqhost {

/// The number of the form in which journals are written. A program reads its own only: a
/// mosaic that comes out a little different is worse than none.
constexpr int kJournalFormat = 1;

/// What a journal tells of the run as a whole; never changed once it is written.
struct JournalHeader {
  std::string library;  ///< version that wrote it
  StitchSettings stitch;
  PreparationSettings preparation;  ///< paths are absolute
  int every = 1;                    ///< of the source, the first of so many frames was taken
  /// Where the frames came from: absolute paths, an address, the number of a camera.
  std::vector<std::string> source;
};

/// The header of a new journal, with the version of this library.
JournalHeader MakeHeader(const StitchSettings& stitch, const PreparationSettings& preparation,
                         int every, const std::vector<std::string>& source);

/// The one line of the header's file.
std::string HeaderLine(const JournalHeader& header);
/// Raises `InputError` saying what is wrong with the text, another format among it.
JournalHeader ReadHeader(const std::string& text);

/// Words of a command line that name a source, as absolute paths where they name files
/// or folders.
std::vector<std::string> AbsoluteSource(const std::vector<std::string>& source);

}  // namespace jqhost

#endif  // JQHOST_JOURNAL_JOURNAL_HEADER_H
