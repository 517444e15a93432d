#include <jqglobalclass.h>

#include <opencv2/imgproc.hpp>
#include <stdexcept>

#include "jqimageconvert.h"

// The cameras of this host deliver red-green-blue.
void ConvertJQImgToCv8UC3(_tagJQIMG* img, cv::Mat& out) {
  if (img->frameNumber == 0) throw std::runtime_error("a frame without a number");
  const cv::Mat frame(img->height, img->width, CV_8UC3, img->pixels,
                      static_cast<std::size_t>(img->bytesPerLine));
  cv::cvtColor(frame, out, cv::COLOR_RGB2BGR);
}

bool IsImageSizeMatched(const QList<QString>&) {
  return false;
}
