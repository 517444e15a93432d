#include "host/assembly/sift_places.h"

#include <algorithm>

#include "host/assemble/hold_together.h"
#include "host/assembly/sift_pairs.h"

namespace jqbench {

std::vector<std::optional<cv::Point2d>> PlaceBySift(const std::vector<cv::Mat>& frames) {
  std::vector<jqhost::Link> links;
  for (const SiftPair& pair : FindSiftPairs(frames)) {
    jqhost::Link link;
    link.first = static_cast<std::size_t>(pair.first);
    link.second = static_cast<std::size_t>(pair.second);
    link.shift = pair.shift;
    link.matches = pair.matches;
    link.confidence = static_cast<double>(pair.matches) / pair.matched;
    link.grade = jqhost::LinkGrade::kSound;
    links.push_back(link);
  }
  const jqhost::Places places = jqhost::HoldTogether(frames.size(), frames.front().size(), links);

  std::vector<std::size_t> sizes(places.islands, 0);
  for (const std::size_t island : places.island) ++sizes[island];
  const auto largest =
      static_cast<std::size_t>(std::max_element(sizes.begin(), sizes.end()) - sizes.begin());
  std::vector<std::optional<cv::Point2d>> result(frames.size());
  for (std::size_t i = 0; i < frames.size(); ++i) {
    if (places.island[i] == largest) result[i] = places.place[i];
  }
  return result;
}

}  // namespace jqbench
