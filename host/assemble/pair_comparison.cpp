#include "host/assemble/pair_comparison.h"

#include <cmath>

#include "host/assemble/pair_grade.h"
#include "host/assemble/work_pool.h"

namespace jqhost {
namespace {

constexpr std::size_t kMostKeptViews = 400;
constexpr double kLeastSideOverlap = 0.2;
// The doubt takes the best agreement within 4 pixels.
constexpr int kSameShift = 4;

}  // namespace

PairComparison::PairComparison(const std::vector<const SetFrame*>& frames,
                               const FrameSetSettings& settings)
    : m_frames(frames),
      m_threads(settings.threads),
      m_engines(static_cast<std::size_t>(settings.threads), MakeEngine(settings)),
      m_views(frames.size()) {}

std::vector<FramePair> PairComparison::Compare(const std::vector<PairToCompare>& pairs,
                                               const StopToken& stop,
                                               const std::function<void(std::size_t)>& progress) {
  std::vector<FramePair> results(pairs.size());
  std::vector<char> done(pairs.size(), 0);
  const auto compare = [&](int thread, std::size_t piece) {
    results[piece] = CompareOne(m_engines[static_cast<std::size_t>(thread)], pairs[piece]);
    done[piece] = 1;
  };
  if (ShareWork(m_threads, pairs.size(), stop, compare, progress)) return results;
  std::vector<FramePair> compared;
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    if (done[i] != 0) compared.push_back(results[i]);
  }
  return compared;
}

FramePair PairComparison::CompareOne(JQStitchingAlgorithm& engine, const PairToCompare& pair) {
  const PairMeasure measure =
      MeasureShift(engine, m_frames[pair.first]->features, m_frames[pair.second]->features);
  FramePair result;
  result.first = pair.first;
  result.second = pair.second;
  result.shift = measure.shift;
  result.fineShift = measure.fineShift;
  result.matches = measure.matches;
  result.matched = measure.matched;
  if (measure.matches >= kMatchesWorthALook) result.doubt = Judge(result);
  return result;
}

PlacementDoubt PairComparison::Judge(const FramePair& pair) {
  const double share = static_cast<double>(pair.matches) / pair.matched;
  return JudgePlacement(*ViewOf(pair.first), *ViewOf(pair.second), pair.shift, share);
}

SideView PairComparison::LookAt(std::size_t first, std::size_t second, cv::Point2d shift) {
  const ReducedFrame& reduced = m_frames[first]->reduced;
  const cv::Size frame = reduced.grey.size() * reduced.factor;
  const double width = frame.width - std::abs(shift.x), height = frame.height - std::abs(shift.y);
  if (width <= 0 || height <= 0 || width * height < kLeastSideOverlap * frame.area()) {
    return SideView::kTooFar;
  }
  const int cellX = cvRound(shift.x / kSameShift), cellY = cvRound(shift.y / kSameShift);
  const auto [known, fresh] =
      m_lookedAt.try_emplace({first, second, cellX, cellY}, SideView::kSaysNothing);
  if (!fresh) return known->second;
  const PlacementDoubt doubt =
      JudgePlacement(*ViewOf(first), *ViewOf(second), cv::Point(cellX, cellY) * kSameShift);
  if (!doubt.doubtful) known->second = SideView::kAgrees;
  if (doubt.reason == DoubtReason::kContradicted) known->second = SideView::kContradicts;
  return known->second;
}

std::shared_ptr<const PlacementView> PairComparison::ViewOf(std::size_t frame) {
  {
    const std::lock_guard<std::mutex> lock(m_viewsMutex);
    if (m_views[frame]) return m_views[frame];
  }
  // Two threads may make the same one at the same time: it comes out the same.
  auto view = std::make_shared<const PlacementView>(MakePlacementView(m_frames[frame]->reduced));
  if (m_frames.size() <= kMostKeptViews) {
    const std::lock_guard<std::mutex> lock(m_viewsMutex);
    m_views[frame] = view;
  }
  return view;
}

}  // namespace jqhost
