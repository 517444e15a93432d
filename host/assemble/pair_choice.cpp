#include "host/assemble/pair_choice.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace jqhost {
namespace {

constexpr double kLikelyShift = 0.9;  // of a frame
constexpr std::size_t kMostLikely = 24;
constexpr std::size_t kAcrossAtOnce = 60;
constexpr std::size_t kMostAcross = 400;

PairToCompare Ordered(std::size_t a, std::size_t b) {
  return {std::min(a, b), std::max(a, b)};
}

std::size_t LargestIsland(const Places& places) {
  std::vector<std::size_t> sizes(places.islands, 0);
  for (const std::size_t island : places.island) ++sizes[island];
  return static_cast<std::size_t>(std::max_element(sizes.begin(), sizes.end()) - sizes.begin());
}

}  // namespace

PairChoice::PairChoice(std::vector<std::size_t> listOrder, cv::Size frame,
                       std::function<bool(std::size_t, std::size_t)> neighbours)
    : m_listOrder(std::move(listOrder)),
      m_frame(frame),
      m_neighbours(std::move(neighbours)),
      m_tried(m_listOrder.size(), 0) {}

std::vector<PairToCompare> PairChoice::First() {
  const std::size_t count = m_listOrder.size();
  std::vector<PairToCompare> pairs;
  if (m_neighbours || count <= kAllUpTo) {
    for (std::size_t a = 0; a < count; ++a) {
      for (std::size_t b = a + 1; b < count; ++b) {
        if (!m_neighbours || m_neighbours(a, b)) pairs.emplace_back(a, b);
      }
    }
  } else {
    std::vector<std::size_t> frames(count);
    for (std::size_t i = 0; i < count; ++i) frames[i] = i;
    std::sort(frames.begin(), frames.end(),
              [this](std::size_t a, std::size_t b) { return m_listOrder[a] < m_listOrder[b]; });
    for (std::size_t i = 1; i < count; ++i) pairs.push_back(Ordered(frames[i - 1], frames[i]));
  }
  return NotYetCompared(pairs);
}

std::vector<PairToCompare> PairChoice::Next(const Places& places) {
  const std::vector<PairToCompare> likely = Likely(places);
  return likely.empty() ? Across(places) : likely;
}

std::vector<PairToCompare> PairChoice::Likely(const Places& places) {
  using Candidate = std::tuple<double, std::size_t>;
  std::vector<PairToCompare> pairs;
  for (std::size_t a = 0; a < m_listOrder.size(); ++a) {
    std::vector<Candidate> near;
    for (std::size_t b = 0; b < m_listOrder.size(); ++b) {
      if (a == b || places.island[a] != places.island[b]) continue;
      const cv::Point2d way = places.Way(a, b);
      const double x = std::abs(way.x) / m_frame.width, y = std::abs(way.y) / m_frame.height;
      if (std::max(x, y) <= kLikelyShift) near.emplace_back(std::hypot(x, y), b);
    }
    std::sort(near.begin(), near.end());
    if (near.size() > kMostLikely) near.resize(kMostLikely);
    for (const Candidate& other : near) pairs.push_back(Ordered(a, std::get<1>(other)));
  }
  return NotYetCompared(pairs);
}

std::vector<PairToCompare> PairChoice::Across(const Places& places) {
  const std::size_t count = m_listOrder.size();
  const std::size_t largest = places.islands > 0 ? LargestIsland(places) : 0;
  std::vector<PairToCompare> pairs;
  for (std::size_t a = 0; a < count; ++a) {
    if (places.island[a] == largest) continue;
    std::size_t chosen = 0;
    // From the next frame on, so that not all begin with the same ones.
    for (std::size_t step = 1; step < count && chosen < kAcrossAtOnce; ++step) {
      const std::size_t b = (a + step) % count;
      if (m_tried[a] >= kMostAcross) break;
      if (places.island[a] == places.island[b] || m_compared.count(Ordered(a, b)) > 0) continue;
      pairs.push_back(Ordered(a, b));
      ++chosen;
      ++m_tried[a];
    }
  }
  return NotYetCompared(pairs);
}

std::vector<PairToCompare> PairChoice::NotYetCompared(const std::vector<PairToCompare>& pairs) {
  std::vector<PairToCompare> fresh;
  for (const PairToCompare& pair : pairs) {
    if (m_compared.insert(pair).second) fresh.push_back(pair);
  }
  return fresh;
}

}  // namespace jqhost
