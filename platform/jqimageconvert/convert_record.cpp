#include <cstring>
#include <opencv2/imgproc.hpp>
#include <string>

#include "jqimageconvert.h"

namespace {

// Thrown directly rather than through cv::error, which would also write the text
// to the error stream of the host.
[[noreturn]] void refuse(const char* field, const std::string& value, const char* wanted) {
  throw cv::Exception(
      cv::Error::StsBadArg,
      std::string("image record: ") + field + " is " + value + ", expected " + wanted,
      "ConvertJQImgToCv8UC3", __FILE__, __LINE__);
}

void check(const _tagJQIMG* img) {
  if (img == nullptr) refuse("record", "null", "a record");
  if (img->width == 0) refuse("width", "0", "1 or more");
  if (img->height == 0) refuse("height", "0", "1 or more");
  if (img->format != 0) refuse("format", std::to_string(img->format), "0");
  if (img->channels != 1 && img->channels != 3 && img->channels != 4)
    refuse("channels", std::to_string(img->channels), "1, 3 or 4");
  if (img->bytesPerChannel != 1 && img->bytesPerChannel != 2)
    refuse("bytesPerChannel", std::to_string(img->bytesPerChannel), "1 or 2");
  if (img->pixels == nullptr) refuse("pixels", "null", "the first sample");

  const std::int64_t row = std::int64_t{img->width} * img->channels * img->bytesPerChannel;
  if (img->bytesPerLine < row)
    refuse("bytesPerLine", std::to_string(img->bytesPerLine),
           (std::to_string(row) + " or more").c_str());
  const std::int64_t lines = std::int64_t{img->bytesPerLine} * img->height;
  if (std::int64_t{img->bufferSize} < lines)
    refuse("bufferSize", std::to_string(img->bufferSize),
           (std::to_string(lines) + " or more").c_str());
}

// The samples as single bytes: a two-byte sample is two channels, low byte first.
cv::Mat byteView(const _tagJQIMG* img) {
  const int bytes = img->channels * img->bytesPerChannel;
  return cv::Mat(img->height, img->width, CV_8UC(bytes), img->pixels,
                 static_cast<std::size_t>(img->bytesPerLine));
}

void keepHighBytes(const cv::Mat& bytes, int channels, cv::Mat& out) {
  const int grey[] = {1, 0, 1, 1, 1, 2};
  const int colour[] = {1, 0, 3, 1, 5, 2};
  cv::mixChannels(&bytes, 1, &out, 1, channels == 1 ? grey : colour, 3);
}

void fill(const _tagJQIMG* img, cv::Mat& out) {
  const cv::Mat bytes = byteView(img);
  if (img->bytesPerChannel == 2) {
    keepHighBytes(bytes, img->channels, out);
  } else if (img->channels == 1) {
    cv::cvtColor(bytes, out, cv::COLOR_GRAY2BGR);
  } else if (img->channels == 4) {
    cv::cvtColor(bytes, out, cv::COLOR_BGRA2BGR);
  } else {
    const std::size_t row = std::size_t{img->width} * 3;
    for (int y = 0; y < bytes.rows; ++y) std::memcpy(out.ptr(y), bytes.ptr(y), row);
  }
}

}  // namespace

void ConvertJQImgToCv8UC3(_tagJQIMG* img, cv::Mat& out) {
  check(img);
  if (out.dims == 2 && out.rows == img->height && out.cols == img->width && out.type() == CV_8UC3) {
    fill(img, out);
    return;
  }
  // `out` is replaced only once the new picture is complete: it keeps its value
  // when memory runs out, and the record may point at its old pixels.
  cv::Mat made(img->height, img->width, CV_8UC3);
  fill(img, made);
  out = made;
}
