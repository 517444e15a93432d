#include "host/assemble/island_joiner.h"

#include <algorithm>
#include <cmath>

namespace jqhost {
namespace {

constexpr double kApart = 0.1;  // of a frame
constexpr int kVoicesNeeded = 2;

bool AreNear(cv::Point2d a, cv::Point2d b, double radius) {
  return std::hypot(a.x - b.x, a.y - b.y) <= radius;
}

}  // namespace

IslandJoiner::IslandJoiner(const Places& places, cv::Size frame, const LookAtSide& look,
                           std::vector<Link>& links)
    : m_places(places), m_frame(frame), m_look(look), m_links(links), m_members(places.islands) {
  for (std::size_t i = 0; i < places.island.size(); ++i) m_members[places.island[i]].push_back(i);
  for (std::size_t i = 0; i < links.size(); ++i) {
    const Link& link = links[i];
    if (link.state != LinkState::kOpen || link.grade != LinkGrade::kWeak) continue;
    const std::size_t a = places.island[link.first], b = places.island[link.second];
    if (a != b) m_bridges[{std::min(a, b), std::max(a, b)}].push_back(MakeBridge(i, a < b));
  }
}

bool IslandJoiner::Join() {
  Proposal strongest;
  for (const auto& [islands, bridges] : m_bridges) {
    Proposal best = Best(islands, bridges);
    if (IsStronger(best, strongest)) strongest = std::move(best);
  }
  for (const Bridge& bridge : strongest.bridges) m_links[bridge.link].state = LinkState::kUsed;
  return !strongest.bridges.empty();
}

IslandJoiner::Bridge IslandJoiner::MakeBridge(std::size_t number, bool forwards) const {
  const Link& link = m_links[number];
  const std::size_t from = forwards ? link.first : link.second;
  const std::size_t to = link.Other(from);
  return {number, m_places.place[from] + link.From(from) - m_places.place[to], m_places.place[from],
          m_places.place[to]};
}

bool IslandJoiner::LookElsewhere(const Bridge& a, const Bridge& b) const {
  const auto apart = [this](cv::Point2d p, cv::Point2d q) {
    return std::abs(p.x - q.x) >= kApart * m_frame.width ||
           std::abs(p.y - q.y) >= kApart * m_frame.height;
  };
  return apart(a.from, b.from) || apart(a.to, b.to);
}

// None where there is none with voices enough, or where another one has as many.
IslandJoiner::Proposal IslandJoiner::Best(const IslandPair& islands,
                                          const std::vector<Bridge>& bridges) const {
  std::vector<Proposal> proposals;
  proposals.reserve(bridges.size());
  for (const Bridge& centre : bridges) {
    proposals.push_back(Propose(islands, bridges, centre.way));
  }
  const auto best =
      std::max_element(proposals.begin(), proposals.end(),
                       [](const Proposal& a, const Proposal& b) { return IsStronger(b, a); });
  if (best == proposals.end() || best->voices < kVoicesNeeded) return Proposal();
  const bool rival =
      std::any_of(proposals.begin(), proposals.end(), [&best](const Proposal& other) {
        return other.voices >= best->voices && !AreNear(other.way, best->way, 2 * kAgreement);
      });
  return rival ? Proposal() : *best;
}

IslandJoiner::Proposal IslandJoiner::Propose(const IslandPair& islands,
                                             const std::vector<Bridge>& bridges,
                                             cv::Point2d way) const {
  Proposal proposal;
  proposal.way = way;
  for (const Bridge& bridge : bridges) {
    if (!AreNear(bridge.way, way, kAgreement)) continue;
    proposal.bridges.push_back(bridge);
    proposal.confidence += m_links[bridge.link].confidence;
  }
  proposal.voices = VoicesOfLinks(proposal);
  const int pictures = m_look ? VoicesOfPictures(islands, proposal) : 0;
  const bool allUnlike =
      std::all_of(proposal.bridges.begin(), proposal.bridges.end(),
                  [this](const Bridge& bridge) { return m_links[bridge.link].unlike; });
  proposal.voices += allUnlike ? std::min(0, pictures) : pictures;
  return proposal;
}

int IslandJoiner::VoicesOfLinks(const Proposal& proposal) const {
  std::vector<const Bridge*> counted;
  for (const Bridge& bridge : proposal.bridges) {
    const bool fresh = std::all_of(counted.begin(), counted.end(), [&](const Bridge* other) {
      return LookElsewhere(bridge, *other);
    });
    if (fresh) counted.push_back(&bridge);
  }
  return static_cast<int>(counted.size());
}

int IslandJoiner::VoicesOfPictures(const IslandPair& islands, const Proposal& proposal) const {
  int voices = 0;
  for (const std::size_t a : m_members[islands.first]) {
    for (const std::size_t b : m_members[islands.second]) {
      const Bridge pair{0, proposal.way, m_places.place[a], m_places.place[b]};
      const bool fresh =
          std::all_of(proposal.bridges.begin(), proposal.bridges.end(),
                      [&](const Bridge& other) { return LookElsewhere(pair, other); });
      if (!fresh) continue;
      const cv::Point2d shift = m_places.place[b] + proposal.way - m_places.place[a];
      const SideView view = a < b ? m_look(a, b, shift) : m_look(b, a, -shift);
      if (view == SideView::kAgrees) ++voices;
      if (view == SideView::kContradicts) voices -= 2;
    }
  }
  return voices;
}

bool IslandJoiner::IsStronger(const Proposal& a, const Proposal& b) {
  if (a.voices != b.voices) return a.voices > b.voices;
  return a.confidence > b.confidence;
}

}  // namespace jqhost
