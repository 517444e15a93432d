#include <pybind11/stl.h>

#include "bindings.h"
#include "to_python.h"
#include "verdict.h"

namespace py = pybind11;

namespace jqpython {

void BindVerdict(py::module_& module) {
  py::class_<Verdict>(module, "Verdict", R"(What became of a frame.

Lengths are pixels of the working scale: those of the frame divided by `detect_level`.)")
      .def_readonly("placed", &Verdict::placed, "Whether the frame is part of the mosaic.")
      .def_readonly("cause", &Verdict::cause,
                    "Why, in few words: 'placed', 'no corners found', 'no corners in the first "
                    "frame', 'overlap test failed', 'too few matches', 'shift too small', 'shift "
                    "too large', and of files also 'size differs', 'unreadable', 'failed', 'not "
                    "reached'.")
      .def_readonly("sentence", &Verdict::sentence, "The same with its numbers, for people.")
      .def_property_readonly(
          "offset", [](const Verdict& v) { return PointTuple(v.offset); },
          "(dx, dy), pixels: where the frame's first pixel lies in the frame that it was measured "
          "against, the one placed last. None where it was not measured.")
      .def_property_readonly(
          "position", [](const Verdict& v) { return PointTuple(v.position); },
          "(x, y), pixels: the frame's top-left corner in the picture, which is the mosaic as it "
          "was right after this frame, or of files the trimmed picture at the end. None for a "
          "frame that was left out, and for the first one, which has no mosaic yet.")
      .def_readonly("matches", &Verdict::matches,
                    "Matches that agree with the offset; a placement needs 11.")
      .def_readonly("shift_share", &Verdict::shiftShare,
                    "The larger part of the offset as a share of the frame, 0 to 1 and more. A "
                    "frame is placed above 0.1 and below 0.9 times `detect_level`. None where it "
                    "was not measured.")
      .def_property_readonly(
          "name",
          [](const Verdict& v) { return v.name ? NameText(*v.name) : py::object(py::none()); },
          "The file; None for a frame that came as an array.")
      .def_readonly("doubtful", &Verdict::doubtful,
                    "Whether the place cannot be trusted, because other shifts would fit as well. "
                    "None where nobody looked: for arrays, and for files that were left out.")
      .def("__repr__", [](const Verdict& v) {
        return NameText("<Verdict " + (v.name ? *v.name + " " : std::string()) + v.sentence + ">");
      });
}

}  // namespace jqpython
