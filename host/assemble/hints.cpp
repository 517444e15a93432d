#include "host/assemble/hints.h"

#include <algorithm>
#include <cmath>

#include "host/input_error.h"
#include "host/record/truth.h"

namespace jqhost {
namespace {

constexpr double kHintTolerance = 0.1;  // of the longer side

PairExpectation ExpectByPositions(cv::Point2d first, cv::Point2d second, cv::Size frame,
                                  double tolerance) {
  PairExpectation expectation;
  expectation.shift = second - first;
  expectation.tolerance = tolerance;
  expectation.neighbours =
      std::abs(expectation.shift->x) < frame.width && std::abs(expectation.shift->y) < frame.height;
  return expectation;
}

PairExpectation ExpectByGrid(const AssemblyHints& hints, std::size_t first, std::size_t second,
                             cv::Size frame, double tolerance) {
  PairExpectation expectation;
  const cv::Point way = hints.grid->Cell(second) - hints.grid->Cell(first);
  expectation.neighbours = std::max(std::abs(way.x), std::abs(way.y)) == 1;
  if (!hints.overlap) return expectation;
  const double step = 1.0 - *hints.overlap;
  expectation.shift = cv::Point2d(way.x * step * frame.width, way.y * step * frame.height);
  expectation.tolerance = tolerance;
  // With much overlap the next but one overlaps, too.
  expectation.neighbours =
      expectation.neighbours || (std::abs(expectation.shift->x) < 0.9 * frame.width &&
                                 std::abs(expectation.shift->y) < 0.9 * frame.height);
  return expectation;
}

}  // namespace

cv::Point GridHint::Cell(std::size_t frame) const {
  const int number = static_cast<int>(frame);
  if (order == GridOrder::kColumn) return {number / rows, number % rows};
  const int row = number / columns, place = number % columns;
  const bool backwards = order == GridOrder::kSnake && row % 2 == 1;
  return {backwards ? columns - 1 - place : place, row};
}

PairExpectation ExpectPair(const AssemblyHints& hints, std::size_t first, std::size_t second,
                           cv::Size frame) {
  const double tolerance = kHintTolerance * std::max(frame.width, frame.height);
  if (!hints.positions.empty()) {
    const auto& a = hints.positions[first];
    const auto& b = hints.positions[second];
    if (a && b) return ExpectByPositions(*a, *b, frame, tolerance);
  }
  if (hints.grid) return ExpectByGrid(hints, first, second, frame, tolerance);
  return PairExpectation();
}

std::vector<std::optional<cv::Point2d>> ReadPositions(const std::string& path,
                                                      const std::vector<std::string>& names,
                                                      double unit) {
  const Truth file = Truth::Read(path, "positions");
  std::vector<std::optional<cv::Point2d>> positions;
  bool any = false;
  for (const std::string& name : names) {
    FrameResult frame;
    frame.name = name;
    cv::Point2d corner;
    positions.emplace_back();
    if (!file.Find(frame, corner)) continue;
    positions.back() = corner * unit;
    any = true;
  }
  if (!any) throw InputError("the positions '" + path + "' name none of the frames");
  return positions;
}

}  // namespace jqhost
