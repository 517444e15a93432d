// Stitches one frame and measures with the engine: both classes and both sibling
// interfaces are linked and called.
#include <jqglobalclass.h>
#include <jqimageconvert.h>
#include <jqimagestitching.h>

#include <cstdio>
#include <vector>

int main() {
  std::vector<unsigned char> pixels(64 * 48 * 3, 7);
  _tagJQIMG record{};
  record.width = 64;
  record.height = 48;
  record.bytesPerLine = 64 * 3;
  record.channels = 3;
  record.bytesPerChannel = 1;
  record.bufferSize = static_cast<std::uint32_t>(pixels.size());
  record.pixels = pixels.data();

  JQImageStitching stitcher;
  const _tagJQIMG* shown = stitcher.Stitching(&record, 0, 1, 8);
  if (shown == nullptr || shown->width != 64 || shown->height != 48) return 1;
  if (stitcher.metaObject()->methodCount() != QObject::staticMetaObject.methodCount() + 4) return 2;

  cv::Mat frame;
  ConvertJQImgToCv8UC3(&record, frame);
  JQStitchingAlgorithm engine;
  if (engine.ImageMotionModel(frame, frame) != 0) return 3;
  if (IsImageSizeMatched({})) return 4;
  std::puts("stitched");
  return 0;
}
