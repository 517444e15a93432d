// The compiled half of the package `jqstitching`; the other half is Python.
#include <algorithm>
#include <opencv2/core.hpp>

#include "bindings.h"
#include "errors.h"

namespace py = pybind11;

PYBIND11_MODULE(_native, module) {
  module.doc() = "Stitches camera frames into one picture while the camera moves.";
  module.attr("__version__") = JQPYTHON_VERSION;
  jqpython::BindErrors(module);
  jqpython::BindVerdict(module);
  jqpython::BindStitcher(module);
  jqpython::BindPairShift(module);
  jqpython::BindFiles(module);
  module.def(
      "set_threads",
      [](int threads) {
        if (threads < 1) throw py::value_error("threads: 1 or more is needed");
        cv::setNumThreads(std::min(threads, cv::getNumberOfCPUs()));
      },
      py::arg("threads"),
      "How many threads the image library may use inside a call, in this whole process. "
      "Results do not depend on it.");
}
