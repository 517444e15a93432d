#ifndef JQPYTHON_BINDINGS_H
#define JQPYTHON_BINDINGS_H

#include <pybind11/pybind11.h>

namespace jqpython {

// One of each for what the module offers; `errors.h` has the exceptions.
void BindVerdict(pybind11::module_& module);
void BindStitcher(pybind11::module_& module);
void BindPairShift(pybind11::module_& module);
void BindFiles(pybind11::module_& module);

}  // namespace jqpython

#endif  // JQPYTHON_BINDINGS_H
