#ifndef JQ_PICTURE_GREY_H
#define JQ_PICTURE_GREY_H

#include <functional>
#include <opencv2/core.hpp>

#include "picture/scratch.h"

namespace jqstitching {

/// Whether the functions below take this picture: 8-bit with 1 or 3 channels.
bool IsPlainPicture(const cv::Mat& picture);

/// Grey pixels of one row of three-channel pixels:
/// (9798 * p0 + 19235 * p1 + 3735 * p2 + 16384) >> 15, the rule of `cv::cvtColor`
/// code 7 for 8 bits in the builds of the image library that we know.
void GreyRow(const unsigned char* colour, int cols, unsigned char* grey);

/// Means of 2 x 2 blocks of two grey rows, (a + b + c + d + 2) >> 2, the rule of
/// `cv::resize` to exactly half. `cols` is the number of means.
void HalveRows(const unsigned char* upper, const unsigned char* lower, int cols,
               unsigned char* half);

/// A grey picture and its half, headers on scratch memory.
struct GreyAndHalf {
  cv::Mat grey, half;
};

/// The functions below give the image library's results: by the kernels above where
/// these follow it (library_rounding.h), else by its own calls.

/// The grey picture; a one-channel picture is copied.
cv::Mat ToGrey(const cv::Mat& picture, ScratchPicture& greyMemory);

/// A grey picture resized to (cols / 2, rows / 2), as `cv::resize` does.
cv::Mat Halve(const cv::Mat& grey, ScratchPicture& halfMemory);

/// Both in one pass where the size is even. `before` is called for every row just
/// before it is read.
GreyAndHalf ToGreyAndHalf(
    const cv::Mat& picture, ScratchPicture& greyMemory, ScratchPicture& halfMemory,
    const std::function<void(int row)>& before = [](int) {});

/// The half of the grey picture alone. `scratch` is working memory.
cv::Mat ToHalf(const cv::Mat& picture, ScratchPicture& scratch, ScratchPicture& halfMemory);

/// Whether `grey` is the grey picture of `picture`. `scratch` is working memory.
bool IsGreyOf(const cv::Mat& picture, const cv::Mat& grey, ScratchPicture& scratch);

}  // namespace jqstitching

#endif  // JQ_PICTURE_GREY_H
