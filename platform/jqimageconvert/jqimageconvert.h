#ifndef JQIMAGECONVERT_H
#define JQIMAGECONVERT_H

#include <QList>
#include <QString>
#include <opencv2/core.hpp>

#include "jqglobalclass.h"

#if defined(_WIN32) && defined(JQ_IMAGE_CONVERT_BUILD)
#define JQ_IMAGE_CONVERT_EXPORT __declspec(dllexport)
#elif defined(_WIN32)
#define JQ_IMAGE_CONVERT_EXPORT __declspec(dllimport)
#else
#define JQ_IMAGE_CONVERT_EXPORT __attribute__((visibility("default")))
#endif

/// Copies a raw record into an 8-bit three-channel blue-green-red matrix.
///
/// Takes 1, 3 and 4 channels (grey is repeated, alpha dropped) of 1 or 2 bytes
/// (of 2 the high byte is kept) and padded lines. `out` keeps its buffer when it
/// has the right size and type and is reallocated otherwise. A record that makes
/// no sense (null record, zero size, null pixels, unknown format, channel count
/// or depth, a line shorter than a row, a buffer smaller than its lines) raises
/// `cv::Exception` naming the field and its value; `out` then stays as it was.
JQ_IMAGE_CONVERT_EXPORT void ConvertJQImgToCv8UC3(_tagJQIMG* img, cv::Mat& out);

/// Whether all files hold images of one width and height, as
/// `cv::imread(path, 1)` gives them. Every file is decoded, one after another, up to
/// the first that does not fit. False for an empty list and when a file gives no
/// picture; a pipe or a device is not opened and counts as one that gives none.
/// Paths are converted with `QString::toLocal8Bit`. What the image library and its
/// codecs have to say about a file goes to standard error.
JQ_IMAGE_CONVERT_EXPORT bool IsImageSizeMatched(const QList<QString>& files);

#endif  // JQIMAGECONVERT_H
