// A live run with the host's own record and converter.
#include <jqglobalclass.h>
#include <jqimagestitching.h>

#include <cstdio>
#include <cstring>
#include <opencv2/imgproc.hpp>
#include <stdexcept>

namespace {

constexpr int kStep = 80;
const cv::Size kFrame(320, 240);

_tagJQIMG RecordOf(const cv::Mat& frame, std::uint64_t number) {
  _tagJQIMG record = {};
  record.width = static_cast<std::uint16_t>(frame.cols);
  record.height = static_cast<std::uint16_t>(frame.rows);
  record.bytesPerLine = static_cast<std::int32_t>(frame.step);
  record.channels = 3;
  record.bytesPerChannel = 1;
  record.bufferSize = static_cast<std::uint32_t>(frame.step * frame.rows);
  record.pixels = frame.data;
  record.frameNumber = number;
  record.stage[2] = 0.5 * static_cast<double>(number);
  std::strcpy(record.note + 930, "the end");
  return record;
}

int Fail(const char* what) {
  std::printf("%s\n", what);
  return 1;
}

}  // namespace

int main() {
  // Coarse specks give corners. No blue at all in what the camera calls its third sample.
  cv::Mat specks(30, 60, CV_8UC3), scene;
  cv::theRNG().state = 5;
  cv::randu(specks, cv::Scalar(10, 10, 0), cv::Scalar(250, 250, 1));
  cv::resize(specks, scene, cv::Size(640, 320), 0, 0, cv::INTER_CUBIC);

  JQImageStitching stitcher;
  for (int i = 0; i < 3; ++i) {
    _tagJQIMG record = RecordOf(scene(cv::Rect({i * kStep, 0}, kFrame)), 1U + i);
    const _tagJQIMG* shown = stitcher.Stitching(&record, 0, 1, 8);
    if (!stitcher.IsLastFrameAccepted()) return Fail("a frame was left out");
    if (shown->frameNumber != 1U + i || shown->stage[2] != record.stage[2] ||
        std::strcmp(shown->note + 930, "the end") != 0)
      return Fail("the host's own fields did not come back");
    if (shown->channels != 3 || shown->bytesPerLine != shown->width * 3 ||
        shown->bufferSize != std::uint32_t(shown->bytesPerLine) * shown->height)
      return Fail("the record shown does not describe a picture");

    // What the converter throws passes through, and the run goes on.
    _tagJQIMG bad = RecordOf(scene(cv::Rect({i * kStep, 0}, kFrame)), 0);
    try {
      stitcher.Stitching(&bad, 0, 1, 8);
      return Fail("a bad frame was taken");
    } catch (const std::runtime_error&) {
    }
  }
  const cv::Rect placed = stitcher.GetPlacedBounds();
  if (placed.size() != kFrame + cv::Size(2 * kStep, 0)) return Fail("the mosaic has another size");
  // No blue: its samples of 0 were lifted to 2 at most.
  cv::Mat blue;
  cv::extractChannel(stitcher.GetMosaic()(placed), blue, 0);
  double most = 0;
  cv::minMaxLoc(blue, nullptr, &most);
  if (most > 2) return Fail("the host's converter was not used");
  std::puts("stitched");
  return 0;
}
