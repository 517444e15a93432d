#include "host/assemble/loops.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

namespace jqhost {
namespace {

constexpr double kClearlyWeaker = 0.6;
constexpr std::size_t kNoLink = std::numeric_limits<std::size_t>::max();

class LoopFinder {
 public:
  LoopFinder(std::size_t frames, const std::vector<Link>& links, const LookAtSide& look)
      : m_links(links), m_look(look), m_of(UsedLinksOf(frames, links)) {
    for (std::size_t i = 0; i < links.size(); ++i) {
      if (links[i].state == LinkState::kUsed) m_between[Key(links[i].first, links[i].second)] = i;
    }
  }

  std::vector<Loop> Find() {
    for (std::size_t frame = 0; frame < m_of.size(); ++frame) {
      AddTriangles(frame);
      AddSquares(frame);
      if (m_look) AddSides(frame);
    }
    return m_loops;
  }

 private:
  static std::pair<std::size_t, std::size_t> Key(std::size_t a, std::size_t b) {
    return {std::min(a, b), std::max(a, b)};
  }
  std::size_t Between(std::size_t a, std::size_t b) const {
    const auto found = m_between.find(Key(a, b));
    return found == m_between.end() ? kNoLink : found->second;
  }

  // Those whose smallest frame this is.
  void AddTriangles(std::size_t a) {
    for (const std::size_t ab : m_of[a]) {
      const std::size_t b = m_links[ab].Other(a);
      if (b < a) continue;
      for (const std::size_t bc : m_of[b]) {
        const std::size_t c = m_links[bc].Other(b);
        if (c < b) continue;
        const std::size_t ca = Between(a, c);
        if (ca != kNoLink) Add({ab, bc, ca, kNoLink}, 3, a);
      }
    }
  }

  // a is the smallest frame, c the one opposite of it: every two ways of two links from a to
  // c make a loop.
  void AddSquares(std::size_t a) {
    struct Way {
      std::size_t via, there, on;
    };
    std::map<std::size_t, std::vector<Way>> ways;
    for (const std::size_t ab : m_of[a]) {
      const std::size_t b = m_links[ab].Other(a);
      if (b < a) continue;
      for (const std::size_t bc : m_of[b]) {
        const std::size_t c = m_links[bc].Other(b);
        if (c > a && Between(a, c) == kNoLink) ways[c].push_back({b, ab, bc});
      }
    }
    for (const auto& [c, found] : ways) {
      for (std::size_t i = 0; i < found.size(); ++i) {
        for (std::size_t k = i + 1; k < found.size(); ++k) {
          if (Between(found[i].via, found[k].via) != kNoLink) continue;
          Add({found[i].there, found[i].on, found[k].on, found[k].there}, 4, a);
        }
      }
    }
  }

  // The two ends of every two links that meet in this frame.
  void AddSides(std::size_t middle) {
    const std::vector<std::size_t>& links = m_of[middle];
    for (std::size_t i = 0; i < links.size(); ++i) {
      for (std::size_t k = i + 1; k < links.size(); ++k) {
        const Link &one = m_links[links[i]], &other = m_links[links[k]];
        const bool inOrder = one.Other(middle) < other.Other(middle);
        const Link &first = inOrder ? one : other, &second = inOrder ? other : one;
        const std::size_t a = first.Other(middle), b = second.Other(middle);
        if (Between(a, b) != kNoLink) continue;
        const SideView view = m_look(a, b, second.From(middle) - first.From(middle));
        if (view == SideView::kTooFar) continue;
        Loop loop{{links[i], links[k], kNoLink, kNoLink}, 2};
        loop.silent = view == SideView::kSaysNothing;
        if (view == SideView::kContradicts) loop.error = std::numeric_limits<double>::infinity();
        m_loops.push_back(loop);
      }
    }
  }

  void Add(const std::array<std::size_t, 4>& links, int length, std::size_t start) {
    cv::Point2d end;
    std::size_t frame = start;
    for (int i = 0; i < length; ++i) {
      const Link& link = m_links[links[static_cast<std::size_t>(i)]];
      end += link.From(frame);
      frame = link.Other(frame);
    }
    m_loops.push_back({links, length, std::hypot(end.x, end.y), false});
  }

  const std::vector<Link>& m_links;
  const LookAtSide& m_look;
  std::vector<std::vector<std::size_t>> m_of;
  std::map<std::pair<std::size_t, std::size_t>, std::size_t> m_between;
  std::vector<Loop> m_loops;
};

// How the loops of a link stand.
struct LoopStanding {
  std::vector<std::size_t> loops;
  int closing = 0;
  int open = 0;

  // The share that closes, less sure where there are few.
  double Share() const { return (closing + 1.0) / (closing + open + 2.0); }
};

class LoopRecord {
 public:
  LoopRecord(std::size_t frames, std::vector<Link>& links, const LookAtSide& look)
      : m_links(links), m_loops(FindLoops(frames, links, look)), m_standings(links.size()) {
    for (std::size_t i = 0; i < m_loops.size(); ++i) {
      if (m_loops[i].silent) continue;
      for (int k = 0; k < m_loops[i].length; ++k) {
        LoopStanding& standing = m_standings[m_loops[i].links[static_cast<std::size_t>(k)]];
        standing.loops.push_back(i);
        ++(m_loops[i].Closes() ? standing.closing : standing.open);
      }
    }
    m_gone.resize(m_loops.size(), false);
  }

  // @param blamed of each link, the highest confidence among those thrown out of its loops
  int ThrowOutWeakest(std::vector<double>& blamed) {
    int thrown = 0;
    for (std::size_t worst = Weakest(); worst != kNoLink; worst = Weakest()) {
      ThrowOut(worst, blamed);
      ++thrown;
    }
    return thrown;
  }

  int ThrowOutGuesses(const std::vector<double>& blamed) {
    int thrown = 0;
    for (std::size_t i = 0; i < m_links.size(); ++i) {
      if (m_links[i].state != LinkState::kUsed || m_standings[i].closing > 0) continue;
      if (blamed[i] <= kClearlyWeaker * m_links[i].confidence) continue;
      m_links[i].state = LinkState::kThrownOut;
      ++thrown;
    }
    return thrown;
  }

 private:
  std::size_t Weakest() const {
    std::size_t weakest = kNoLink;
    for (std::size_t i = 0; i < m_links.size(); ++i) {
      if (m_links[i].state != LinkState::kUsed || m_standings[i].open == 0) continue;
      if (weakest == kNoLink || !IsStronger(i, weakest)) weakest = i;
    }
    return weakest;
  }

  bool IsStronger(std::size_t a, std::size_t b) const {
    const double shareA = m_standings[a].Share(), shareB = m_standings[b].Share();
    if (shareA != shareB) return shareA > shareB;
    if (m_links[a].confidence != m_links[b].confidence) {
      return m_links[a].confidence > m_links[b].confidence;
    }
    return m_links[a].matches > m_links[b].matches;
  }

  void ThrowOut(std::size_t link, std::vector<double>& blamed) {
    m_links[link].state = LinkState::kThrownOut;
    for (const std::size_t i : m_standings[link].loops) {
      if (m_gone[i]) continue;
      m_gone[i] = true;
      const bool closes = m_loops[i].Closes();
      for (int k = 0; k < m_loops[i].length; ++k) {
        const std::size_t member = m_loops[i].links[static_cast<std::size_t>(k)];
        --(closes ? m_standings[member].closing : m_standings[member].open);
        if (!closes) blamed[member] = std::max(blamed[member], m_links[link].confidence);
      }
    }
  }

  std::vector<Link>& m_links;
  std::vector<Loop> m_loops;
  std::vector<LoopStanding> m_standings;
  std::vector<bool> m_gone;
};

}  // namespace

std::vector<Loop> FindLoops(std::size_t frames, const std::vector<Link>& links,
                            const LookAtSide& look) {
  return LoopFinder(frames, links, look).Find();
}

int ThrowOutLoopBreakers(std::size_t frames, std::vector<Link>& links, const LookAtSide& look) {
  std::vector<double> blamed(links.size(), 0.0);
  int thrown = 0;
  for (;;) {
    // A link that goes no longer cuts loops of four into two, so these come to light.
    LoopRecord record(frames, links, look);
    const int now = record.ThrowOutWeakest(blamed);
    if (now == 0) return thrown + record.ThrowOutGuesses(blamed);
    thrown += now;
  }
}

}  // namespace jqhost
