#ifndef JQSTITCH_EXIT_CODES_H
#define JQSTITCH_EXIT_CODES_H

namespace jqstitch {

/// What the program tells the shell. Scripts rely on these numbers.
enum ExitCode {
  kExitOk = 0,           ///< every frame is in the picture; the command did its work
  kExitWrongInput = 1,   ///< a file, folder, camera or output path is not usable
  kExitWrongUsage = 2,   ///< the command line itself is wrong
  kExitSomeLeftOut = 3,  ///< there is a picture, but frames are missing from it
  kExitNonePlaced = 4,   ///< no frame besides the first could be placed
};

}  // namespace jqstitch

#endif  // JQSTITCH_EXIT_CODES_H
