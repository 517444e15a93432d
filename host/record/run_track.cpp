#include "host/record/run_track.h"

#include <algorithm>
#include <cstdlib>

#include "host/verdict/standing.h"

namespace jqhost {

std::vector<Loss> FindLosses(const std::vector<FrameResult>& frames) {
  std::vector<Loss> losses;
  std::size_t held = 0;
  bool lost = false;
  for (std::size_t i = 0; i < frames.size(); ++i) {
    const Standing standing = StandingOf(frames[i]);
    if (standing == Standing::kPlaced || standing == Standing::kTracked) {
      if (lost) losses.back().regained = true;
      lost = false;
      held = i;
    } else if (standing == Standing::kLost) {
      if (!lost) losses.push_back({held, i, i, false});
      lost = true;
      losses.back().last = i;
    }
  }
  return losses;
}

std::vector<std::optional<cv::Point>> CameraPlaces(const std::vector<FrameResult>& frames) {
  std::vector<std::optional<cv::Point>> places(frames.size());
  cv::Point reference;
  for (std::size_t i = 0; i < frames.size(); ++i) {
    const JQFrameVerdict& measured = frames[i].measured;
    if (frames[i].Placed()) {
      reference = frames[i].position;
      places[i] = reference;
    } else if (measured.registered && measured.matchCount >= JQFrameVerdict::kMatchesNeeded) {
      places[i] = reference + measured.offset;
    }
  }
  return places;
}

std::optional<double> MedianStep(const RunRecord& record) {
  const std::vector<std::optional<cv::Point>> places = CameraPlaces(record.frames);
  std::vector<double> steps;
  for (std::size_t i = 1; i < places.size(); ++i) {
    if (!places[i] || !places[i - 1]) continue;
    const cv::Point way = *places[i] - *places[i - 1];
    steps.push_back(
        std::max(std::abs(way.x) / static_cast<double>(std::max(1, record.workingSize.width)),
                 std::abs(way.y) / static_cast<double>(std::max(1, record.workingSize.height))));
  }
  if (steps.size() < 3) return std::nullopt;
  const auto middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
  std::nth_element(steps.begin(), middle, steps.end());
  return *middle;
}

}  // namespace jqhost
