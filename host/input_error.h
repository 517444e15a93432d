#ifndef JQHOST_INPUT_ERROR_H
#define JQHOST_INPUT_ERROR_H

#include <stdexcept>

namespace jqhost {

/// A file, folder, camera or output path that cannot be used. The text names it,
/// the cause and, where there is one, the way out.
class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace jqhost

#endif  // JQHOST_INPUT_ERROR_H
