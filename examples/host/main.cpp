// Stitches the pictures named on the command line into mosaic.png, frame by frame,
// as a host does with the frames of its camera.
#include <jqglobalclass.h>
#include <jqimagestitching.h>

#include <cstdio>
#include <opencv2/imgcodecs.hpp>

int main(int argc, char** argv) {
  JQImageStitching stitcher;  // one live run; a new run takes a new stitcher
  cv::Size size;              // of every frame of the run
  for (int i = 1; i < argc; ++i) {
    const cv::Mat frame = cv::imread(argv[i], cv::IMREAD_COLOR);  // the camera's part
    if (size.empty()) size = frame.size();
    if (frame.empty() || frame.size() != size) {
      std::printf("%s: no frame of this run\n", argv[i]);  // the library does not compare
      continue;
    }
    _tagJQIMG record = {};
    record.width = static_cast<std::uint16_t>(frame.cols);
    record.height = static_cast<std::uint16_t>(frame.rows);
    record.bytesPerLine = static_cast<std::int32_t>(frame.step);
    record.channels = 3;
    record.bytesPerChannel = 1;
    record.bufferSize = static_cast<std::uint32_t>(frame.step * frame.rows);
    record.pixels = frame.data;
    stitcher.Stitching(&record, 0, 1, 8);  // overlap test, full size, 500 corners
    std::printf("%s: %s\n", argv[i], stitcher.IsLastFrameAccepted() ? "placed" : "left out");
  }
  const cv::Rect placed = stitcher.GetPlacedBounds();
  if (placed.empty()) return 1;  // fewer than two frames: no mosaic yet
  return cv::imwrite("mosaic.png", stitcher.GetMosaic()(placed)) ? 0 : 1;
}
