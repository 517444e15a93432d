#ifndef JQSTITCH_EXIT_CODES_H
#define JQSTITCH_EXIT_CODES_H

#include "host/record/run_record.h"

namespace jqstitch {

/// What the program tells the shell. Scripts rely on these numbers.
enum ExitCode {
  kExitOk = 0,          ///< every frame is in the picture or was followed; the command did its work
  kExitWrongInput = 1,  ///< a file, folder, camera or output path is not usable
  kExitWrongUsage = 2,  ///< the command line itself is wrong
  kExitSomeLeftOut = 3,  ///< a picture, but frames are missing, were lost, or are doubtful
  kExitNonePlaced = 4,   ///< no frame besides the first could be placed
};

/// The exit code of a run whose picture and reports could be written.
inline ExitCode ExitCodeOf(jqhost::Outcome outcome) {
  switch (outcome) {
    case jqhost::Outcome::kAllPlaced:
    case jqhost::Outcome::kAllFollowed:
      return kExitOk;
    case jqhost::Outcome::kSomeDoubtful:
    case jqhost::Outcome::kSomeLeftOut:
      return kExitSomeLeftOut;
    case jqhost::Outcome::kNonePlaced:
      return kExitNonePlaced;
    case jqhost::Outcome::kNoPicture:
      break;
  }
  return kExitWrongInput;
}

}  // namespace jqstitch

#endif  // JQSTITCH_EXIT_CODES_H
