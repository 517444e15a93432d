#include "host/assemble/link.h"

namespace jqhost {

std::vector<std::vector<std::size_t>> UsedLinksOf(std::size_t frames,
                                                  const std::vector<Link>& links) {
  std::vector<std::vector<std::size_t>> result(frames);
  for (std::size_t i = 0; i < links.size(); ++i) {
    if (links[i].state != LinkState::kUsed) continue;
    result[links[i].first].push_back(i);
    result[links[i].second].push_back(i);
  }
  return result;
}

}  // namespace jqhost
