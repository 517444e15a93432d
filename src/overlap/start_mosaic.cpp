#include "overlap/start_mosaic.h"

#include <limits>

#include "picture/growable_pixels.h"

jqstitching::StartedMosaic jqstitching::StartMosaic(const cv::Mat& frame) {
  const int rows = frame.rows, cols = frame.cols;
  constexpr int most = std::numeric_limits<int>::max() / 2;
  if (rows > most || cols > most) {
    CV_Error(cv::Error::StsOutOfRange, "twice the frame is more than a picture can have");
  }
  const cv::Point position(cols - cols / 2, rows - rows / 2);
  cv::Mat canvas = GrowableZeros(2 * rows, 2 * cols, frame.channels() == 1 ? CV_8UC1 : CV_8UC3);
  cv::Mat middle = canvas(cv::Rect(position, frame.size()));
  if (frame.type() != canvas.type()) {
    CV_Error(
        cv::Error::StsUnmatchedFormats,
        cv::format("a canvas takes 8-bit frames of 1 or 3 channels, not type %d", frame.type()));
  }
  frame.copyTo(middle);
  return {canvas, position};
}
