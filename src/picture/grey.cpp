#include "picture/grey.h"

#include <cstring>
#include <opencv2/imgproc.hpp>

#include "picture/library_rounding.h"

namespace jqstitching {
namespace {

bool IsEven(const cv::Mat& picture) {
  return picture.cols % 2 == 0 && picture.rows % 2 == 0 && !picture.empty();
}

// Whether the kernels give the library's grey of this picture.
bool IsOwnGrey(const cv::Mat& picture) {
  return picture.channels() == 1 || OwnGreyFollows();
}

// Whether the grey rows of this picture, two at a time, give the library's half.
bool IsOwnHalf(const cv::Mat& picture) {
  return IsEven(picture) && IsOwnGrey(picture) && OwnHalvingFollows();
}

// One row in grey: the row itself where it is grey already, else in `buffer`.
const unsigned char* GreyOrSelf(const cv::Mat& picture, int row, unsigned char* buffer) {
  if (picture.channels() == 1) return picture.ptr(row);
  GreyRow(picture.ptr(row), picture.cols, buffer);
  return buffer;
}

void CopyGreyRow(const cv::Mat& picture, int row, cv::Mat& grey) {
  const unsigned char* source = GreyOrSelf(picture, row, grey.ptr(row));
  if (source != grey.ptr(row)) {
    std::memcpy(grey.ptr(row), source, static_cast<size_t>(picture.cols));
  }
}

}  // namespace

bool IsPlainPicture(const cv::Mat& picture) {
  return picture.type() == CV_8UC1 || picture.type() == CV_8UC3;
}

cv::Mat ToGrey(const cv::Mat& picture, ScratchPicture& greyMemory) {
  cv::Mat grey = greyMemory.shape(picture.rows, picture.cols, CV_8UC1);
  if (!IsOwnGrey(picture) && !picture.empty()) {
    cv::cvtColor(picture, grey, cv::COLOR_RGB2GRAY);
    return grey;
  }
  for (int r = 0; r < picture.rows; ++r) CopyGreyRow(picture, r, grey);
  return grey;
}

cv::Mat Halve(const cv::Mat& grey, ScratchPicture& halfMemory) {
  cv::Mat half = halfMemory.shape(grey.rows / 2, grey.cols / 2, CV_8UC1);
  if (!IsOwnHalf(grey)) {
    // Also raises the image library's error for pictures too small to halve.
    cv::resize(grey, half, cv::Size(grey.cols / 2, grey.rows / 2), 0, 0, cv::INTER_LINEAR);
    return half;
  }
  for (int r = 0; r < half.rows; ++r) {
    HalveRows(grey.ptr(2 * r), grey.ptr(2 * r + 1), half.cols, half.ptr(r));
  }
  return half;
}

GreyAndHalf ToGreyAndHalf(const cv::Mat& picture, ScratchPicture& greyMemory,
                          ScratchPicture& halfMemory, const std::function<void(int)>& before) {
  if (!IsOwnHalf(picture)) {
    for (int r = 0; r < picture.rows; ++r) before(r);
    const cv::Mat grey = ToGrey(picture, greyMemory);
    return {grey, Halve(grey, halfMemory)};
  }
  GreyAndHalf out{greyMemory.shape(picture.rows, picture.cols, CV_8UC1),
                  halfMemory.shape(picture.rows / 2, picture.cols / 2, CV_8UC1)};
  for (int r = 0; r < out.half.rows; ++r) {
    for (int k = 2 * r; k < 2 * r + 2; ++k) {
      before(k);
      CopyGreyRow(picture, k, out.grey);
    }
    HalveRows(out.grey.ptr(2 * r), out.grey.ptr(2 * r + 1), out.half.cols, out.half.ptr(r));
  }
  return out;
}

cv::Mat ToHalf(const cv::Mat& picture, ScratchPicture& scratch, ScratchPicture& halfMemory) {
  if (!IsOwnHalf(picture)) return Halve(ToGrey(picture, scratch), halfMemory);
  cv::Mat rows = scratch.shape(2, picture.cols, CV_8UC1);
  cv::Mat half = halfMemory.shape(picture.rows / 2, picture.cols / 2, CV_8UC1);
  for (int r = 0; r < half.rows; ++r) {
    const unsigned char* upper = GreyOrSelf(picture, 2 * r, rows.ptr(0));
    const unsigned char* lower = GreyOrSelf(picture, 2 * r + 1, rows.ptr(1));
    HalveRows(upper, lower, half.cols, half.ptr(r));
  }
  return half;
}

bool IsGreyOf(const cv::Mat& picture, const cv::Mat& grey, ScratchPicture& scratch) {
  if (picture.size() != grey.size() || grey.empty()) return false;
  if (!IsOwnGrey(picture)) {
    const cv::Mat now = ToGrey(picture, scratch);
    for (int r = 0; r < picture.rows; ++r) {
      if (std::memcmp(now.ptr(r), grey.ptr(r), static_cast<size_t>(picture.cols)) != 0)
        return false;
    }
    return true;
  }
  cv::Mat row = scratch.shape(1, picture.cols, CV_8UC1);
  for (int r = 0; r < picture.rows; ++r) {
    const unsigned char* now = GreyOrSelf(picture, r, row.ptr());
    if (std::memcmp(now, grey.ptr(r), static_cast<size_t>(picture.cols)) != 0) return false;
  }
  return true;
}

}  // namespace jqstitching
