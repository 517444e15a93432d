#include "arrays.h"

#include <cstdint>
#include <opencv2/imgproc.hpp>

#include "host/source/image_record.h"

namespace py = pybind11;

namespace jqpython {
namespace {

std::string ShapeText(const py::array& array) {
  return py::str(array.attr("shape")).cast<std::string>();
}

// The array that keeps a matrix alive with it.
py::array Wrap(const cv::Mat& pixels, std::uint8_t* first, py::ssize_t channelStride) {
  const py::capsule owner(new cv::Mat(pixels),
                          [](void* held) { delete static_cast<cv::Mat*>(held); });
  return py::array_t<std::uint8_t>(
      {pixels.rows, pixels.cols, 3},
      {static_cast<py::ssize_t>(pixels.step[0]), py::ssize_t{3}, channelStride}, first, owner);
}

}  // namespace

ChannelOrder ParseOrder(const std::string& name) {
  if (name == "rgb") return ChannelOrder::kRgb;
  if (name == "bgr") return ChannelOrder::kBgr;
  throw py::value_error("order is 'rgb' or 'bgr', not '" + name + "'");
}

cv::Mat FromArray(const py::object& object, ChannelOrder order, const char* what) {
  if (!py::isinstance<py::array>(object)) {
    throw py::type_error(std::string(what) + ": a NumPy array of uint8 is needed, not " +
                         py::str(py::type::of(object).attr("__name__")).cast<std::string>());
  }
  const auto array = py::reinterpret_borrow<py::array>(object);
  const std::string shape = ShapeText(array);
  if (!py::isinstance<py::array_t<std::uint8_t>>(object)) {
    throw py::type_error(std::string(what) + ": samples of uint8 are needed, not an array of " +
                         py::str(array.dtype()).cast<std::string>() + " of shape " + shape);
  }
  const py::ssize_t channels = array.ndim() == 3 ? array.shape(2) : 1;
  const bool isFrame = array.ndim() == 2 || (array.ndim() == 3 && (channels == 3 || channels == 4));
  if (!isFrame || array.size() == 0) {
    throw py::value_error(std::string(what) +
                          ": the shape is (height, width), (height, width, 3) "
                          "or (height, width, 4), none of them 0, not " +
                          shape);
  }
  constexpr py::ssize_t kLongestSide = 65535;
  if (array.shape(0) > kLongestSide || array.shape(1) > kLongestSide) {
    throw py::value_error(std::string(what) + ": a frame has at most 65535 pixels a side, not " +
                          shape);
  }
  // NumPy resolves the strides, whatever they are; an array that is packed already is taken
  // as it is.
  const auto packed = py::array_t<std::uint8_t, py::array::c_style>::ensure(array);
  if (!packed) throw py::error_already_set();
  const cv::Mat header(static_cast<int>(array.shape(0)), static_cast<int>(array.shape(1)),
                       CV_8UC(static_cast<int>(channels)),
                       const_cast<std::uint8_t*>(packed.data()));  // only read
  if (const std::string unfit = jqhost::WhyNoRecord(header); !unfit.empty()) {
    throw py::value_error(std::string(what) + ": " + unfit + ", of shape " + shape);
  }
  cv::Mat frame;
  if (channels == 1 || (channels == 3 && order == ChannelOrder::kBgr)) {
    header.copyTo(frame);
  } else if (channels == 3) {
    cv::cvtColor(header, frame, cv::COLOR_RGB2BGR);
  } else {
    cv::cvtColor(header, frame,
                 order == ChannelOrder::kRgb ? cv::COLOR_RGBA2BGR : cv::COLOR_BGRA2BGR);
  }
  return frame;
}

cv::Mat InOrder(const cv::Mat& pixels, ChannelOrder order) {
  if (order == ChannelOrder::kBgr) return pixels.clone();
  cv::Mat swapped;
  cv::cvtColor(pixels, swapped, cv::COLOR_BGR2RGB);
  return swapped;
}

py::array OwnArray(const cv::Mat& pixels) {
  return Wrap(pixels, pixels.data, 1);
}

py::array ReadOnlyView(const cv::Mat& pixels, ChannelOrder order) {
  py::array view = order == ChannelOrder::kBgr ? Wrap(pixels, pixels.data, 1)
                                               : Wrap(pixels, pixels.data + 2, -1);
  view.attr("setflags")(py::arg("write") = false);
  return view;
}

}  // namespace jqpython
