#include "arrays.h"
#include "bindings.h"
#include "pair_shift.h"
#include "to_python.h"

namespace py = pybind11;

namespace jqpython {

void BindPairShift(py::module_& module) {
  py::class_<PairShift>(module, "Shift", "How one frame lies against another.")
      .def_property_readonly(
          "offset", [](const PairShift& s) { return PointTuple(s.offset); },
          "(dx, dy), pixels: where b's first pixel lies in a, so that b[y, x] shows what "
          "a[y + dy, x + dx] shows. (0, 0) where nothing was matched.")
      .def_readonly("matches", &PairShift::matches, "Matches that agree with the offset.")
      .def_property_readonly("found", &PairShift::Found,
                             "Whether enough of them agree to place a frame: 11.")
      .def("__repr__", [](const PairShift& s) {
        return "<Shift (" + std::to_string(s.offset.x) + ", " + std::to_string(s.offset.y) + "), " +
               std::to_string(s.matches) + " matches>";
      });

  module.def(
      "register",
      [](const py::object& a, const py::object& b, const std::string& orderName) {
        const ChannelOrder order = ParseOrder(orderName);
        const cv::Mat first = FromArray(a, order, "a");
        const cv::Mat second = FromArray(b, order, "b");
        const py::gil_scoped_release released;
        return RegisterPair(first, second);
      },
      py::arg("a"), py::arg("b"), py::arg("order") = "rgb",
      R"(Finds the shift by whole pixels between two frames.

a, b: uint8 arrays of one height and width, (H, W), (H, W, 3) or (H, W, 4), any strides;
    alpha is not looked at.
order: 'rgb' or 'bgr', how the colours of a pixel follow each other.

The way in which a live run registers a frame. Works while other threads run Python.)");
}

}  // namespace jqpython
