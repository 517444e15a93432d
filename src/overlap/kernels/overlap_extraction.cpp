#include "overlap/kernels/overlap_extraction.h"

#include <limits>

namespace jqstitching {
namespace {

// One axis of the overlap: half-open ranges in both images.
struct Ranges {
  cv::Range first, second;
};

int Checked(std::int64_t value) {
  // Out of every image's range either way; the limit keeps it so.
  constexpr std::int64_t lowest = std::numeric_limits<int>::min() + 1;
  constexpr std::int64_t highest = std::numeric_limits<int>::max();
  return static_cast<int>(value < lowest ? lowest : value > highest ? highest : value);
}

Ranges CutAxis(std::int64_t origin, std::int64_t shift, std::int64_t size) {
  if (shift >= 0) {
    return {cv::Range(Checked(origin + shift), Checked(origin + size)),
            cv::Range(0, Checked(size - shift))};
  }
  return {cv::Range(Checked(origin), Checked(origin + size + shift)),
          cv::Range(Checked(-shift), Checked(size))};
}

}  // namespace

Overlap CutOverlap(const cv::Point& origin, int dx, int dy, const cv::Mat& first,
                   const cv::Mat& second) {
  // Each axis is cut by the sign of its own shift; zero counts as non-negative.
  const Ranges x = CutAxis(origin.x, dx, second.cols);
  const Ranges y = CutAxis(origin.y, dy, second.rows);
  // Both axes at once: a view without rows has no columns left to take a range of.
  return {first(y.first, x.first), second(y.second, x.second)};
}

}  // namespace jqstitching
