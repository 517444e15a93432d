#include "host/assemble/conclusion.h"

#include <algorithm>
#include <numeric>
#include <tuple>

#include "host/assemble/loops.h"
#include "host/assemble/pair_grade.h"

namespace jqhost {
namespace {

cv::Point Rounded(cv::Point2d place) {
  return {cvRound(place.x), cvRound(place.y)};
}

// In the numbers of the graph; the frames of each by the list's order, the islands as
// `Assembly` has them.
std::vector<std::vector<std::size_t>> SortedIslands(const std::vector<std::size_t>& listed,
                                                    const Places& places) {
  std::vector<std::vector<std::size_t>> islands(places.islands);
  for (std::size_t i = 0; i < listed.size(); ++i) islands[places.island[i]].push_back(i);
  for (std::vector<std::size_t>& island : islands) {
    std::sort(island.begin(), island.end(),
              [&listed](std::size_t a, std::size_t b) { return listed[a] < listed[b]; });
  }
  std::sort(islands.begin(), islands.end(), [&listed](const auto& a, const auto& b) {
    if (a.size() != b.size()) return a.size() > b.size();
    return listed[a.front()] < listed[b.front()];
  });
  const auto lone = std::find_if(islands.begin(), islands.end(),
                                 [](const auto& island) { return island.size() == 1; });
  // Where nothing holds together the first frame is the picture.
  if (lone != islands.end()) islands.erase(lone + (lone == islands.begin() ? 1 : 0), islands.end());
  return islands;
}

void AddIslands(const std::vector<std::size_t>& listed, const Places& places, cv::Size frame,
                Assembly& assembly) {
  for (const std::vector<std::size_t>& members : SortedIslands(listed, places)) {
    Island island;
    const cv::Point2d origin = places.place[members.front()];
    for (const std::size_t member : members) {
      AssembledFrame& told = assembly.frames[listed[member]];
      told.place = places.place[member] - origin;
      told.position = Rounded(places.place[member]) - Rounded(origin);
      told.island = static_cast<int>(assembly.islands.size()) + 1;
      island.frames.push_back(listed[member]);
      island.bounds |= cv::Rect(*told.position, frame);
    }
    assembly.islands.push_back(std::move(island));
  }
}

void TellFrames(Assembly& assembly) {
  const auto rank = [&assembly](std::size_t pair) {
    const FramePair& p = assembly.pairs[pair];
    return std::make_tuple(p.state == PairState::kUsed, p.Confidence(), p.matches);
  };
  for (std::size_t i = 0; i < assembly.pairs.size(); ++i) {
    const FramePair& pair = assembly.pairs[i];
    if (pair.matches == 0) continue;
    for (const std::size_t number : {pair.first, pair.second}) {
      AssembledFrame& frame = assembly.frames[number];
      if (!frame.bestPair || rank(i) > rank(*frame.bestPair)) frame.bestPair = i;
      if (pair.state != PairState::kUsed) continue;
      ++frame.pairs;
      frame.residual = std::max(frame.residual, pair.residual.value_or(0.0));
      frame.confidence = std::max(frame.confidence, pair.Confidence());
    }
  }
}

LoopClosure MeasureLoops(std::size_t frames, const std::vector<Link>& links) {
  std::vector<double> errors;
  for (const Loop& loop : FindLoops(frames, links)) errors.push_back(loop.error);
  LoopClosure closure;
  closure.loops = errors.size();
  if (errors.empty()) return closure;
  std::sort(errors.begin(), errors.end());
  const std::size_t middle = errors.size() / 2;
  closure.median =
      errors.size() % 2 == 1 ? errors[middle] : (errors[middle - 1] + errors[middle]) / 2;
  closure.largest = errors.back();
  return closure;
}

}  // namespace

void Conclude(const std::vector<std::size_t>& listed, const Places& places,
              const std::vector<Link>& links, std::vector<FramePair> pairs, cv::Size frame,
              Assembly& assembly) {
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    FramePair& pair = pairs[i];
    pair.state = WhyUnused(pair, frame);
    if (links[i].state == LinkState::kUsed) pair.state = PairState::kUsed;
    if (links[i].state == LinkState::kThrownOut) pair.state = PairState::kThrownOut;
    if (places.island[pair.first] == places.island[pair.second]) {
      pair.residual = places.Residual(links[i]);
    }
    pair.first = listed[pair.first];
    pair.second = listed[pair.second];
  }
  std::sort(pairs.begin(), pairs.end(), [](const FramePair& a, const FramePair& b) {
    return std::tie(a.first, a.second) < std::tie(b.first, b.second);
  });
  assembly.pairs = std::move(pairs);
  AddIslands(listed, places, frame, assembly);
  TellFrames(assembly);
  assembly.loops = MeasureLoops(listed.size(), links);
}

}  // namespace jqhost
