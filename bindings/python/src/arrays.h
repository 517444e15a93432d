#ifndef JQPYTHON_ARRAYS_H
#define JQPYTHON_ARRAYS_H

#include <pybind11/numpy.h>

#include <opencv2/core.hpp>
#include <string>

namespace jqpython {

/// How the three colours of a pixel follow each other in arrays. Matrices are always
/// blue, green, red.
enum class ChannelOrder { kRgb, kBgr };

/// "rgb" or "bgr"; raises `ValueError` for anything else.
ChannelOrder ParseOrder(const std::string& name);

/// A copy of an array as a matrix of 1 or 3 channels (alpha is dropped), with the
/// interpreter held, so that nobody writes into the array meanwhile. `TypeError` for what is
/// no array of bytes, `ValueError` for a shape that no frame has; both name the shape.
/// @param what the argument's name, for the text
cv::Mat FromArray(const pybind11::object& array, ChannelOrder order, const char* what);

/// A copy of the pixels in this order; needs no interpreter.
cv::Mat InOrder(const cv::Mat& pixels, ChannelOrder order);

/// An array on a matrix of three channels that nobody else writes: no copy.
pybind11::array OwnArray(const cv::Mat& pixels);

/// A read-only array on pixels in blue, green, red that somebody else may write. It holds a
/// header on them for as long as it lives, and copies nothing: in the order red, green, blue
/// its last axis runs backwards.
pybind11::array ReadOnlyView(const cv::Mat& pixels, ChannelOrder order);

}  // namespace jqpython

#endif  // JQPYTHON_ARRAYS_H
