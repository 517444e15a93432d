#ifndef JQPYTHON_ERRORS_H
#define JQPYTHON_ERRORS_H

#include <pybind11/pybind11.h>

#include <stdexcept>

namespace jqpython {

/// Two frames make a mosaic; there are fewer.
class NoMosaicError : public std::runtime_error {
 public:
  NoMosaicError() : std::runtime_error("there is no mosaic yet: it takes two frames") {}
};

/// Adds the exceptions of the module, and turns those of the libraries into exceptions of
/// Python: memory that cannot be had becomes `MemoryError`, a file that cannot be used
/// `InputError`, everything else that the libraries raise `StitchingError`.
void BindErrors(pybind11::module_& module);

}  // namespace jqpython

#endif  // JQPYTHON_ERRORS_H
