#include "report/growth_section.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <vector>

#include "blend/kernels/borders.h"
#include "picture/growable_pixels.h"
#include "report/process.h"
#include "report/statistics.h"
#include "report/stopwatch.h"

namespace jqbench {
namespace {

using jqstitching::Borders;

enum class Way { kInPlace, kCopy };

struct Sample {
  std::vector<double> milliseconds;
  double peak = 0;
  std::size_t bytes = 0;
};

// Every row is its own, and told by one number.
uchar Level(int row) {
  return static_cast<uchar>(1 + row % 251);
}

bool HoldsTheOldPixels(const cv::Mat& grown, const cv::Size& old, const Borders& borders) {
  std::vector<uchar> row(grown.cols * grown.elemSize());
  for (int r = 0; r < grown.rows; ++r) {
    std::fill(row.begin(), row.end(), uchar{0});
    const int from = r - borders.top;
    if (from >= 0 && from < old.height) {
      const auto first = row.begin() + static_cast<std::ptrdiff_t>(borders.left * grown.elemSize());
      std::fill_n(first, old.width * grown.elemSize(), Level(from));
    }
    if (std::memcmp(grown.ptr(r), row.data(), row.size()) != 0) return false;
  }
  return true;
}

void Grow(Way way, cv::Size size, const Borders& borders, Sample& sample, bool& equal) {
  TrimHeap();
  const std::size_t without = Resident();
  cv::Mat mosaic = way == Way::kInPlace
                       ? jqstitching::GrowableZeros(size.height, size.width, CV_8UC3)
                       : cv::Mat(size, CV_8UC3);
  for (int r = 0; r < mosaic.rows; ++r) mosaic.row(r).setTo(cv::Scalar::all(Level(r)));
  RestartPeakResident();
  sample.milliseconds.push_back(Milliseconds([&] { jqstitching::AddBorders(mosaic, borders, 1); }));
  const std::size_t peak = PeakResident();
  sample.bytes = mosaic.total() * mosaic.elemSize();
  const double share = (static_cast<double>(peak) - static_cast<double>(without)) /
                       static_cast<double>(sample.bytes);
  sample.peak = std::max(sample.peak, share);
  equal = HoldsTheOldPixels(mosaic, size, borders) && equal;
}

}  // namespace

std::string GrowthHeader() {
  return "| mosaic MB | new MB | side | in place ms | copy ms | ratio | in place peak | copy peak "
         "|\n"
         "|---:|---:|---|---:|---:|---:|---:|---:|\n";
}

std::string GrowthRows(cv::Size frame, cv::Size frames, int repeats, bool& equal) {
  const cv::Size size(frame.width * frames.width, frame.height * frames.height);
  const struct {
    const char* name;
    Borders borders;
  } sides[] = {{"bottom", {0, frame.height, 0, 0}},
               {"right", {0, 0, 0, frame.width}},
               {"top", {frame.height, 0, 0, 0}},
               {"left", {0, 0, frame.width, 0}},
               {"top left", {frame.height, 0, frame.width, 0}}};
  std::string text;
  for (const auto& side : sides) {
    Sample inPlace, copy;
    for (int i = 0; i < repeats; ++i) {
      // By turns, so that a change of the machine's mood meets both.
      Grow(Way::kInPlace, size, side.borders, inPlace, equal);
      Grow(Way::kCopy, size, side.borders, copy, equal);
    }
    constexpr double kMega = 1e6;
    const double fast = Median(inPlace.milliseconds), slow = Median(copy.milliseconds);
    text += cv::format("| %.0f | %.0f | %s | %.1f | %.1f | %.1f | %.2f | %.2f |\n",
                       3.0 * size.width * size.height / kMega,
                       static_cast<double>(inPlace.bytes) / kMega, side.name, fast, slow,
                       slow / fast, inPlace.peak, copy.peak);
  }
  return text;
}

}  // namespace jqbench
