#include "errors.h"

#include <opencv2/core.hpp>
#include <string>

#include "host/input_error.h"

namespace py = pybind11;

namespace jqpython {
namespace {

// Made once for the process, which the module is never unloaded from.
PyObject* stitchingError = nullptr;
PyObject* inputError = nullptr;

PyObject* AddException(py::module_& module, const char* name, const char* doc, PyObject* base) {
  const std::string qualified = std::string("jqstitching.") + name;
  PyObject* const type = PyErr_NewExceptionWithDoc(qualified.c_str(), doc, base, nullptr);
  if (type == nullptr) throw py::error_already_set();
  module.add_object(name, py::reinterpret_borrow<py::object>(type));
  return type;
}

// File names in the text can be any bytes.
void Raise(PyObject* type, const std::string& text) {
  const py::object decoded = py::reinterpret_steal<py::object>(
      PyUnicode_DecodeFSDefaultAndSize(text.data(), static_cast<Py_ssize_t>(text.size())));
  if (decoded) PyErr_SetObject(type, decoded.ptr());
}

void Translate(std::exception_ptr error) {
  try {
    if (error) std::rethrow_exception(error);
  } catch (const cv::Exception& raised) {
    Raise(raised.code == cv::Error::StsNoMem ? PyExc_MemoryError : stitchingError, raised.err);
  } catch (const jqhost::InputError& raised) {
    Raise(inputError, raised.what());
  } catch (const NoMosaicError& raised) {
    Raise(stitchingError, raised.what());
  }
}

}  // namespace

void BindErrors(py::module_& module) {
  stitchingError = AddException(module, "StitchingError",
                                "The library could not do what it was asked for. What was "
                                "stitched before is still there.",
                                PyExc_RuntimeError);
  inputError = AddException(module, "InputError",
                            "A file, folder or output path that cannot be used. The text names "
                            "it and the cause.",
                            PyExc_ValueError);
  py::register_exception_translator(&Translate);
}

}  // namespace jqpython
