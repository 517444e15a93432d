#include "host/assemble/hold_together.h"

#include <algorithm>
#include <cmath>

#include "host/assemble/island_joiner.h"

namespace jqhost {
namespace {

// Wrong pairs of this many that no doubt fell on were seen nowhere.
constexpr int kMatchesEnough = 40;
// A link that nothing else confirms is unlike the others where its correlation lacks this many
// times of 1 what theirs lacks, and what is left when one frame is taken off the other has this
// many times the energy, beside the median.
constexpr double kUnlike = 4.0;
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

double Median(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// How much the frames of a right pair agree, which depends on the noise of the camera. Where a
// scene looks alike in two places these are still not the same. The correlation alone would be
// unfair to faint parts of a scene, where noise is most of what there is; the difference alone
// to rich parts, where half a sample off is much.
class UsualAgreement {
 public:
  explicit UsualAgreement(const std::vector<Link>& links) {
    std::vector<double> agreements, differences;
    for (const Link& link : links) {
      if (link.state != LinkState::kUsed) continue;
      agreements.push_back(link.agreement);
      differences.push_back(link.difference * link.difference);
    }
    m_known = agreements.size() >= kLinksForAMedian;
    if (!m_known) return;
    m_lack = 1.0 - Median(agreements);
    m_energy = Median(differences);
  }

  bool IsUnlike(const Link& link) const {
    return m_known && 1.0 - link.agreement > kUnlike * m_lack &&
           link.difference * link.difference > kUnlike * m_energy;
  }

 private:
  bool m_known = false;
  double m_lack = 0.0, m_energy = 0.0;
};

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
  const UsualAgreement usual(links);
  for (std::size_t i = 0; i < links.size(); ++i) {
    Link& link = links[i];
    if (link.state != LinkState::kUsed || link.expected || link.matches >= kMatchesEnough ||
        counts[i].closing > 0) {
      continue;
    }
    if (counts[i].silent == 0 && !usual.IsUnlike(link)) continue;
    link.state = LinkState::kOpen;
    link.grade = LinkGrade::kWeak;
  }
  for (Link& link : links) {
    link.unlike = usual.IsUnlike(link);
  }
}

// Whether any was.
bool UseWeakLoops(std::size_t frames, cv::Size frame, const LookAtSide& look,
                  std::vector<Link>& links) {
  std::vector<Link> all = links;
  for (Link& link : all) {
    if (link.state == LinkState::kOpen && link.grade == LinkGrade::kWeak && !link.unlike) {
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
