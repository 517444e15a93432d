#ifndef JQPYTHON_TO_PYTHON_H
#define JQPYTHON_TO_PYTHON_H

#include <pybind11/pybind11.h>

#include <array>
#include <opencv2/core.hpp>
#include <optional>
#include <string>

namespace jqpython {

/// (x, y), or None.
inline pybind11::object PointTuple(const std::optional<cv::Point>& point) {
  if (!point) return pybind11::none();
  return pybind11::make_tuple(point->x, point->y);
}

/// A path as the file system spells it: `str`, `bytes` or anything with `__fspath__`.
inline std::string PathText(const pybind11::object& path) {
  return pybind11::module_::import("os").attr("fsencode")(path).cast<pybind11::bytes>();
}

/// The reverse: any bytes become a `str`.
inline pybind11::object NameText(const std::string& name) {
  return pybind11::module_::import("os").attr("fsdecode")(pybind11::bytes(name));
}

/// Micrometres, as Python gives the side of a pixel, in metres; 0 for None.
inline double PixelMetres(const std::optional<double>& micrometres) {
  if (!micrometres) return 0.0;
  // The range that the command line takes: 0.01 nm to 100 mm.
  if (!(*micrometres >= 1e-5 && *micrometres <= 1e5)) {
    throw pybind11::value_error("pixel_size: micrometres from 0.00001 to 100000 are needed");
  }
  return *micrometres * 1e-6;
}

/// Red, green and blue of a background.
inline std::optional<std::array<int, 3>> CheckColour(
    const std::optional<std::array<int, 3>>& colour) {
  for (const int value : colour.value_or(std::array<int, 3>{})) {
    if (value < 0 || value > 255) {
      throw pybind11::value_error("background: (red, green, blue) of 0 to 255 each is needed");
    }
  }
  return colour;
}

}  // namespace jqpython

#endif  // JQPYTHON_TO_PYTHON_H
