// Conversion of image records, with buffers of exactly the size that the record
// names: one byte read too many is a finding. What is converted is compared with a
// plain reading of the record's contract, sample by sample.

#include <cstdlib>
#include <cstring>
#include <memory>

#include "fuzz_input.h"
#include "jqimageconvert.h"
#include "require.h"

namespace {

constexpr std::uint32_t kMostBytes = 1u << 16;

bool MakesSense(const _tagJQIMG& r) {
  const bool knownChannels = r.channels == 1 || r.channels == 3 || r.channels == 4;
  const bool knownDepth = r.bytesPerChannel == 1 || r.bytesPerChannel == 2;
  if (!knownChannels || !knownDepth || r.format != 0 || r.pixels == nullptr) return false;
  if (r.width == 0 || r.height == 0) return false;
  const std::int64_t row = std::int64_t{r.width} * r.channels * r.bytesPerChannel;
  return r.bytesPerLine >= row &&
         std::int64_t{r.bufferSize} >= std::int64_t{r.bytesPerLine} * r.height;
}

// Blue, green or red of one pixel: a grey sample stands for all three, and of two
// bytes the second is the high one.
unsigned char Expected(const _tagJQIMG& r, const unsigned char* pixels, int y, int x, int k) {
  const int channel = r.channels == 1 ? 0 : k;
  const std::int64_t sample = std::int64_t{x} * r.channels + channel;
  return pixels[std::int64_t{y} * r.bytesPerLine + sample * r.bytesPerChannel +
                (r.bytesPerChannel - 1)];
}

struct Free {
  void operator()(void* block) const { std::free(block); }
};

// What the caller passes as output: nothing, a matrix that fits, one of another type,
// a view of a larger one, or one of three dimensions.
cv::Mat Output(int kind, const _tagJQIMG& r) {
  const int rows = r.height % 512, cols = r.width % 512;
  const int cube[] = {2, 3, 4};
  switch (kind % 5) {
    case 0:
      return cv::Mat();
    case 1:
      return cv::Mat(rows, cols, CV_8UC3, cv::Scalar::all(7));
    case 2:
      return cv::Mat(rows, cols, CV_32FC1, cv::Scalar::all(7));
    case 3:
      return cv::Mat(rows + 2, cols + 2, CV_8UC3, cv::Scalar::all(7))(cv::Rect(1, 1, cols, rows));
    default:
      return cv::Mat(3, cube, CV_8UC3, cv::Scalar::all(7));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput in(data, size);
  const int shape = in.u8();
  _tagJQIMG r = {};
  r.width = in.u16();
  r.height = in.u16();
  r.format = in.u8();
  r.channels = in.u8();
  r.bytesPerChannel = in.u8();
  r.bytesPerLine = in.i32();
  r.bufferSize = in.u32();
  const int output = in.u8();
  // Random numbers hardly ever fit together, so most inputs have some that do.
  if (shape & 1) {
    const std::int64_t row = std::int64_t{r.width} * r.channels * r.bytesPerChannel;
    r.bytesPerLine = static_cast<std::int32_t>(row + in.range(-1, 6));
  }
  if (shape & 2) {
    const std::int64_t lines = std::int64_t{r.bytesPerLine} * r.height + in.range(-1, 3);
    r.bufferSize = static_cast<std::uint32_t>(lines);
  }
  if (r.bufferSize > kMostBytes) return -1;
  const bool isMissing = (shape & 28) == 28;
  // A byte later every other time: samples of two bytes need not be aligned.
  const std::size_t shift = shape >> 5 & 1;
  std::unique_ptr<unsigned char, Free> block(
      static_cast<unsigned char*>(std::malloc(r.bufferSize + shift)));
  unsigned char* pixels = block.get() + shift;
  for (std::uint32_t k = 0; k < r.bufferSize; ++k) {
    pixels[k] = in.atEnd() ? static_cast<unsigned char>(k * 37 + 11) : in.u8();
  }
  r.pixels = isMissing ? nullptr : pixels;

  cv::Mat out = Output(output, r);
  const cv::Mat before = out;
  const cv::Mat bytesBefore = out.clone();
  bool raised = false;
  try {
    ConvertJQImgToCv8UC3(&r, out);
  } catch (const cv::Exception&) {
    raised = true;
  }
  Require(raised != MakesSense(r), "a record is refused exactly when it makes no sense");
  if (raised) {
    Require(out.data == before.data && out.dims == before.dims && out.type() == before.type() &&
                out.size == before.size,
            "a refused record leaves the output as it was");
    Require(out.empty() || cv::norm(out.reshape(1), bytesBefore.reshape(1), cv::NORM_INF) == 0,
            "a refused record leaves the output's pixels as they were");
    return 0;
  }
  Require(out.dims == 2 && out.type() == CV_8UC3 && out.rows == r.height && out.cols == r.width,
          "the output has the record's size");
  for (int y = 0; y < out.rows; ++y) {
    for (int x = 0; x < out.cols; ++x) {
      for (int k = 0; k < 3; ++k) {
        Require(out.ptr(y)[3 * x + k] == Expected(r, pixels, y, x, k), "a sample is the record's");
      }
    }
  }
  return 0;
}
