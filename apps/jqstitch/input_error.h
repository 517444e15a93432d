#ifndef JQSTITCH_INPUT_ERROR_H
#define JQSTITCH_INPUT_ERROR_H

#include <stdexcept>

namespace jqstitch {

/// A file, folder, camera or output path that cannot be used. The text names it,
/// the cause and, where there is one, the way out. Ends the command with
/// `kExitWrongInput`.
class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace jqstitch

#endif  // JQSTITCH_INPUT_ERROR_H
