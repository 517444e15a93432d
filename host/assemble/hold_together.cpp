#include "host/assemble/hold_together.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace jqhost {
namespace {

constexpr double kApart = 0.1;  // of a frame

bool AreNear(cv::Point2d a, cv::Point2d b, double radius) {
  return std::hypot(a.x - b.x, a.y - b.y) <= radius;
}

// A weak link between two islands: from the one of the lower number to the other.
struct Bridge {
  std::size_t link = 0;
  cv::Point2d way;       // of the other island's origin from this one's
  cv::Point2d from, to;  // where its frames lie in their islands
};

class IslandJoiner {
 public:
  IslandJoiner(const Places& places, cv::Size frame, std::vector<Link>& links)
      : m_places(places), m_frame(frame), m_links(links) {
    for (std::size_t i = 0; i < links.size(); ++i) {
      const Link& link = links[i];
      if (link.state != LinkState::kOpen || link.grade != LinkGrade::kWeak) continue;
      const std::size_t a = places.island[link.first], b = places.island[link.second];
      if (a != b) m_bridges[{std::min(a, b), std::max(a, b)}].push_back(MakeBridge(i, a < b));
    }
  }

  // Uses the links of the strongest agreement; false where there is none.
  bool Join() {
    std::vector<std::size_t> strongest;
    for (const auto& [islands, bridges] : m_bridges) {
      std::vector<std::size_t> agreeing = Agreeing(bridges);
      if (IsStronger(agreeing, strongest)) strongest = std::move(agreeing);
    }
    for (const std::size_t link : strongest) m_links[link].state = LinkState::kUsed;
    return !strongest.empty();
  }

 private:
  Bridge MakeBridge(std::size_t number, bool forwards) const {
    const Link& link = m_links[number];
    const std::size_t from = forwards ? link.first : link.second;
    const std::size_t to = link.Other(from);
    return {number, m_places.place[from] + link.From(from) - m_places.place[to],
            m_places.place[from], m_places.place[to]};
  }

  bool LookElsewhere(const Bridge& a, const Bridge& b) const {
    const auto apart = [this](cv::Point2d p, cv::Point2d q) {
      return std::abs(p.x - q.x) >= kApart * m_frame.width ||
             std::abs(p.y - q.y) >= kApart * m_frame.height;
    };
    return apart(a.from, b.from) || apart(a.to, b.to);
  }

  // The bridges around each one that agree with it, and the most there are; empty where
  // others say something else as often.
  std::vector<std::size_t> Agreeing(const std::vector<Bridge>& bridges) const {
    std::vector<std::size_t> best, rival;
    cv::Point2d bestWay;
    for (const Bridge& centre : bridges) {
      std::vector<std::size_t> group;
      bool elsewhere = false;
      for (const Bridge& bridge : bridges) {
        if (!AreNear(bridge.way, centre.way, kAgreement)) continue;
        group.push_back(bridge.link);
        elsewhere = elsewhere || LookElsewhere(bridge, centre);
      }
      if (!elsewhere) continue;
      const bool same = !best.empty() && AreNear(centre.way, bestWay, 2 * kAgreement);
      if (IsStronger(group, best)) {
        if (!same) rival = best;
        best = group;
        bestWay = centre.way;
      } else if (!same && group.size() > rival.size()) {
        rival = group;
      }
    }
    return rival.size() < best.size() ? best : std::vector<std::size_t>();
  }

  bool IsStronger(const std::vector<std::size_t>& a, const std::vector<std::size_t>& b) const {
    if (a.size() != b.size()) return a.size() > b.size();
    const auto sum = [this](const std::vector<std::size_t>& group) {
      double confidence = 0;
      for (const std::size_t link : group) confidence += m_links[link].confidence;
      return confidence;
    };
    return sum(a) > sum(b);
  }

  const Places& m_places;
  const cv::Size m_frame;
  std::vector<Link>& m_links;
  std::map<std::pair<std::size_t, std::size_t>, std::vector<Bridge>> m_bridges;
};

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

}  // namespace

Places HoldTogether(std::size_t frames, cv::Size frame, std::vector<Link>& links,
                    const LookAtSide& look) {
  for (Link& link : links) {
    const bool predicted = link.expected && link.grade != LinkGrade::kWorthless;
    if (link.grade == LinkGrade::kSound || predicted) link.state = LinkState::kUsed;
  }
  ThrowOutLoopBreakers(frames, links, look);
  Places places = PlaceConsistently(frames, links);
  while (IslandJoiner(places, frame, links).Join()) places = PlaceConsistently(frames, links);
  if (UseWhatAgrees(places, links)) places = PlaceConsistently(frames, links);
  return places;
}

}  // namespace jqhost
