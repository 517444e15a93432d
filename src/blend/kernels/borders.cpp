#include "blend/kernels/borders.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <opencv2/imgproc.hpp>

#include "picture/growable_pixels.h"
#include "picture/page_memory.h"

namespace jqstitching {
namespace {

int Sum(int size, int before, int after) {
  const std::int64_t sum = std::int64_t{size} + before + after;
  if (sum > std::numeric_limits<int>::max()) {
    CV_Error(cv::Error::StsOutOfRange,
             cv::format("a picture cannot grow from %d to %lld rows or columns", size,
                        static_cast<long long>(sum)));
  }
  return static_cast<int>(sum);
}

// Where the rows of an inner picture lie in the memory of an outer one, and where they lie
// when they are packed at its start. A row never lies further back when it is packed.
struct RowPlaces {
  RowPlaces(const cv::Mat& outer, const Borders& borders)
      : outerStep(static_cast<std::size_t>(outer.cols) * outer.elemSize()),
        innerStep(static_cast<std::size_t>(outer.cols - borders.left - borders.right) *
                  outer.elemSize()),
        first(borders.top * outerStep + borders.left * outer.elemSize()),
        rows(outer.rows - borders.top - borders.bottom) {}
  std::size_t packed(int row) const { return row * innerStep; }
  std::size_t spread(int row) const { return first + row * outerStep; }

  std::size_t outerStep, innerStep, first;
  int rows;
};

// Moves packed rows to their places and makes the gaps black that held packed pixels.
// From the last row on: none of those that wait is overwritten.
void Spread(uchar* pixels, const RowPlaces& places) {
  const std::size_t used = places.packed(places.rows);
  const auto blacken = [&](std::size_t from, std::size_t to) {
    if (from < used) std::memset(pixels + from, 0, std::min(to, used) - from);
  };
  const std::size_t end = places.spread(places.rows - 1) + places.innerStep;
  if (end > used) ExpectWrites(pixels + used, end - used);
  for (int r = places.rows - 1; r >= 0; --r) {
    const std::size_t to = places.spread(r);
    if (to != places.packed(r))
      std::memmove(pixels + to, pixels + places.packed(r), places.innerStep);
    blacken(to + places.innerStep, to + places.outerStep);
  }
  blacken(0, places.first);
}

void Pack(uchar* pixels, const RowPlaces& places) {
  for (int r = 0; r < places.rows; ++r) {
    const std::size_t from = places.spread(r);
    if (from != places.packed(r))
      std::memmove(pixels + places.packed(r), pixels + from, places.innerStep);
  }
}

}  // namespace

cv::Size SizeWith(const Borders& borders, cv::Size size) {
  return cv::Size(Sum(size.width, borders.left, borders.right),
                  Sum(size.height, borders.top, borders.bottom));
}

bool AddBorders(cv::Mat& picture, const Borders& borders, int headers) {
  const cv::Size size = SizeWith(borders, picture.size());
  const bool negative = std::min({borders.top, borders.bottom, borders.left, borders.right}) < 0;
  if (!negative && size.empty()) {
    // The image library would go through the rows, which have no pixels.
    picture.create(size, picture.type());
    return false;
  }
  if (negative || size == picture.size() || !IsGrowable(picture)) {
    cv::copyMakeBorder(picture, picture, borders.top, borders.bottom, borders.left, borders.right,
                       cv::BORDER_CONSTANT, cv::Scalar(0, 0, 0, 0));
    return false;
  }
  if (IsGrowableAlone(picture, headers) && ResizePixels(picture, size.height, size.width)) {
    Spread(picture.data, RowPlaces(picture, borders));
    return true;
  }
  cv::Mat larger = GrowableZeros(size.height, size.width, picture.type());
  picture.copyTo(larger(cv::Rect(cv::Point(borders.left, borders.top), picture.size())));
  picture = larger;
  return false;
}

bool RemoveBorders(cv::Mat& picture, const Borders& borders, int headers) {
  const cv::Rect inner(borders.left, borders.top, picture.cols - borders.left - borders.right,
                       picture.rows - borders.top - borders.bottom);
  if (inner.size() == picture.size()) return false;
  if (IsGrowableAlone(picture, headers)) {
    Pack(picture.data, RowPlaces(picture, borders));
    ResizePixels(picture, inner.height, inner.width);
    return true;
  }
  cv::Mat smaller = IsGrowable(picture) ? GrowableZeros(inner.height, inner.width, picture.type())
                                        : cv::Mat(inner.size(), picture.type());
  picture(inner).copyTo(smaller);
  picture = smaller;
  return false;
}

}  // namespace jqstitching
