#include "host/assemble/place_frames.h"

#include <Eigen/SparseCholesky>
#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace jqhost {
namespace {

constexpr double kLensError = 0.3;
constexpr double kCornerError = 2.0;
constexpr double kLeastConfidence = 0.1;
constexpr int kReweightings = 10;
constexpr double kCauchyScale = 2.0;

double BaseWeight(const Link& link) {
  const double variance =
      kLensError * kLensError + kCornerError * kCornerError / std::max(1, link.matches);
  return std::max(kLeastConfidence, link.confidence) / variance;
}

// The unknowns of all islands together: the first frame of each is known.
class Solver {
 public:
  Solver(const std::vector<Link>& links, Places& places) : m_places(places) {
    for (const Link& link : links) {
      if (link.state == LinkState::kUsed) m_links.push_back(&link);
    }
    const std::size_t frames = places.island.size();
    m_column.resize(frames, kKnown);
    std::vector<bool> begun(places.islands, false);
    for (std::size_t i = 0; i < frames; ++i) {
      if (begun[places.island[i]]) m_column[i] = m_unknowns++;
      begun[places.island[i]] = true;
    }
  }

  void Solve() {
    if (m_unknowns == 0) return;
    std::vector<double> weights;
    for (const Link* link : m_links) weights.push_back(BaseWeight(*link));
    SolveWith(weights);
    for (int i = 0; i < kReweightings; ++i) {
      for (std::size_t k = 0; k < m_links.size(); ++k) {
        const double off = m_places.Residual(*m_links[k]) / kCauchyScale;
        weights[k] = BaseWeight(*m_links[k]) / (1.0 + off * off);
      }
      SolveWith(weights);
    }
  }

 private:
  static constexpr int kKnown = -1;

  void SolveWith(const std::vector<double>& weights) {
    std::vector<Eigen::Triplet<double>> entries;
    Eigen::MatrixXd right = Eigen::MatrixXd::Zero(m_unknowns, 2);
    for (std::size_t k = 0; k < m_links.size(); ++k) {
      const int a = m_column[m_links[k]->first], b = m_column[m_links[k]->second];
      const Eigen::RowVector2d pull(weights[k] * m_links[k]->shift.x,
                                    weights[k] * m_links[k]->shift.y);
      if (a != kKnown) {
        entries.emplace_back(a, a, weights[k]);
        right.row(a) -= pull;
      }
      if (b != kKnown) {
        entries.emplace_back(b, b, weights[k]);
        right.row(b) += pull;
      }
      // The lower half is enough.
      if (a != kKnown && b != kKnown) {
        entries.emplace_back(std::max(a, b), std::min(a, b), -weights[k]);
      }
    }
    Eigen::SparseMatrix<double> matrix(m_unknowns, m_unknowns);
    matrix.setFromTriplets(entries.begin(), entries.end());
    const Eigen::SimplicialLDLT<Eigen::SparseMatrix<double>> decomposition(matrix);
    // Positive weights between frames of one island cannot fail.
    if (decomposition.info() != Eigen::Success)
      throw std::logic_error("the places have no solution");
    const Eigen::MatrixXd solution = decomposition.solve(right);
    for (std::size_t i = 0; i < m_column.size(); ++i) {
      if (m_column[i] == kKnown) continue;
      m_places.place[i] = cv::Point2d(solution(m_column[i], 0), solution(m_column[i], 1));
    }
  }

  Places& m_places;
  std::vector<const Link*> m_links;
  std::vector<int> m_column;  // of each frame
  int m_unknowns = 0;
};

Places FindIslands(std::size_t frames, const std::vector<Link>& links) {
  constexpr auto kNone = static_cast<std::size_t>(-1);
  const std::vector<std::vector<std::size_t>> linksOf = UsedLinksOf(frames, links);
  Places places;
  places.island.assign(frames, kNone);
  places.place.assign(frames, cv::Point2d());
  for (std::size_t start = 0; start < frames; ++start) {
    if (places.island[start] != kNone) continue;
    std::vector<std::size_t> reached = {start};
    places.island[start] = places.islands;
    while (!reached.empty()) {
      const std::size_t frame = reached.back();
      reached.pop_back();
      for (const std::size_t link : linksOf[frame]) {
        const std::size_t other = links[link].Other(frame);
        if (places.island[other] != kNone) continue;
        places.island[other] = places.islands;
        reached.push_back(other);
      }
    }
    ++places.islands;
  }
  return places;
}

}  // namespace

double Places::Residual(const Link& link) const {
  const cv::Point2d off = Way(link.first, link.second) - link.shift;
  return std::hypot(off.x, off.y);
}

Places PlaceFrames(std::size_t frames, const std::vector<Link>& links) {
  Places places = FindIslands(frames, links);
  Solver(links, places).Solve();
  return places;
}

Places PlaceConsistently(std::size_t frames, std::vector<Link>& links) {
  for (;;) {
    Places places = PlaceFrames(frames, links);
    Link* worst = nullptr;
    double largest = kAgreement;
    for (Link& link : links) {
      if (link.state != LinkState::kUsed || places.Residual(link) <= largest) continue;
      worst = &link;
      largest = places.Residual(link);
    }
    if (worst == nullptr) return places;
    worst->state = LinkState::kThrownOut;
  }
}

}  // namespace jqhost
