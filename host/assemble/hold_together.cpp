#include "host/assemble/hold_together.h"

#include <algorithm>
#include <cmath>

#include "host/assemble/island_joiner.h"

namespace jqhost {
namespace {

// Wrong pairs of this many that no doubt fell on were seen nowhere.
constexpr int kMatchesEnough = 40;
// How much less than the others a pair may agree that nothing else confirms: this many times
// what the median lacks of 1.
constexpr double kLessAgreement = 4.0;
constexpr std::size_t kLinksForAMedian = 3;
constexpr double kStep = 0.1;  // of a frame

// Whether any was.
bool UseWhatAgrees(const Places& places, std::vector<Link>& links) {
  bool any = false;
  for (Link& link : links) {
    if (link.state != LinkState::kOpen || link.grade == LinkGrade::kWorthless) continue;
    if (places.island[link.first] != places.island[link.second]) continue;
    if (places.Residual(link) > kAgreement) continue;
    link.state = LinkState::kUsed;
    any = true;
  }
  return any;
}

// The least correlation of a link that nothing else confirms. Where a scene looks alike in two
// places these are still not the same, and how much the same place agrees with itself depends
// on the noise of the camera, which the set tells.
double LeastAgreement(const std::vector<Link>& links) {
  std::vector<double> agreements;
  for (const Link& link : links) {
    if (link.state == LinkState::kUsed) agreements.push_back(link.agreement);
  }
  if (agreements.size() < kLinksForAMedian) return -1.0;
  const auto middle = agreements.begin() + static_cast<std::ptrdiff_t>(agreements.size() / 2);
  std::nth_element(agreements.begin(), middle, agreements.end());
  return 1.0 - kLessAgreement * (1.0 - *middle);
}

struct LoopCounts {
  int closing = 0, open = 0, silent = 0;
};

// Loops with a link shorter than a tenth of a frame say the same thing twice and do not count.
std::vector<LoopCounts> CountLoops(std::size_t frames, cv::Size frame,
                                   const std::vector<Link>& links, const LookAtSide& look) {
  std::vector<LoopCounts> counts(links.size());
  for (const Loop& loop : FindLoops(frames, links, look)) {
    bool isShort = false;
    for (int i = 0; i < loop.length; ++i) {
      const Link& link = links[loop.links[static_cast<std::size_t>(i)]];
      isShort = isShort || (std::abs(link.shift.x) < kStep * frame.width &&
                            std::abs(link.shift.y) < kStep * frame.height);
    }
    for (int i = 0; i < loop.length; ++i) {
      LoopCounts& count = counts[loop.links[static_cast<std::size_t>(i)]];
      if (loop.silent) {
        ++count.silent;
      } else if (!loop.Closes()) {
        ++count.open;
      } else if (!isShort) {
        ++count.closing;
      }
    }
  }
  return counts;
}

void TakeBackUnconfirmed(std::size_t frames, cv::Size frame, const LookAtSide& look,
                         std::vector<Link>& links) {
  const std::vector<LoopCounts> counts = CountLoops(frames, frame, links, look);
  const double least = LeastAgreement(links);
  for (std::size_t i = 0; i < links.size(); ++i) {
    Link& link = links[i];
    if (link.state != LinkState::kUsed || link.expected || link.matches >= kMatchesEnough ||
        counts[i].closing > 0) {
      continue;
    }
    if (counts[i].silent == 0 && link.agreement >= least) continue;
    link.state = LinkState::kOpen;
    link.grade = LinkGrade::kWeak;
  }
  for (Link& link : links) {
    const bool weak = link.state == LinkState::kOpen && link.grade == LinkGrade::kWeak;
    if (weak && link.agreement < least) link.grade = LinkGrade::kDoubtful;
  }
}

// Whether any was.
bool UseWeakLoops(std::size_t frames, cv::Size frame, const LookAtSide& look,
                  std::vector<Link>& links) {
  std::vector<Link> all = links;
  for (Link& link : all) {
    if (link.state == LinkState::kOpen && link.grade == LinkGrade::kWeak) {
      link.state = LinkState::kUsed;
    }
  }
  const std::vector<LoopCounts> counts = CountLoops(frames, frame, all, look);
  bool any = false;
  for (std::size_t i = 0; i < links.size(); ++i) {
    if (all[i].state == links[i].state || counts[i].closing == 0 || counts[i].open > 0) continue;
    links[i].state = LinkState::kUsed;
    any = true;
  }
  return any;
}

}  // namespace

Places HoldTogether(std::size_t frames, cv::Size frame, std::vector<Link>& links,
                    const LookAtSide& look) {
  for (Link& link : links) {
    const bool predicted = link.expected && link.grade != LinkGrade::kWorthless;
    if (link.grade == LinkGrade::kSound || predicted) link.state = LinkState::kUsed;
  }
  ThrowOutLoopBreakers(frames, links, look);
  TakeBackUnconfirmed(frames, frame, look, links);
  if (UseWeakLoops(frames, frame, look, links)) ThrowOutLoopBreakers(frames, links, look);
  Places places = PlaceConsistently(frames, links);
  while (IslandJoiner(places, frame, look, links).Join()) places = PlaceConsistently(frames, links);
  if (UseWhatAgrees(places, links)) places = PlaceConsistently(frames, links);
  return places;
}

}  // namespace jqhost
