#include "host/assemble/pair_comparison.h"

#include <algorithm>
#include <cmath>

#include "host/assemble/pair_grade.h"
#include "host/assemble/work_pool.h"

namespace jqhost {
namespace {

constexpr std::size_t kMostKeptViews = 400;
constexpr double kLeastSideOverlap = 0.2;
// The doubt takes the best agreement within 4 pixels.
constexpr int kSameShift = 4;

double Variance(const PlacementView& view, const cv::Rect& area) {
  const auto sum = [&area](const cv::Mat& integral) {
    const cv::Point end = area.br();
    return integral.at<double>(end) - integral.at<double>(area.y, end.x) -
           integral.at<double>(end.y, area.x) + integral.at<double>(area.tl());
  };
  const double mean = sum(view.sums) / area.area();
  return std::max(0.0, sum(view.squares) / area.area() - mean * mean);
}

// The difference of two signals of these variances that correlate so much, if both are equally
// strong: its variance is twice (1 - correlation) times theirs.
double Difference(const PlacementView& first, const PlacementView& second, cv::Point shift,
                  double correlation) {
  if (first.Empty()) return 0.0;
  const cv::Point way(cvRound(static_cast<double>(shift.x) / first.factor),
                      cvRound(static_cast<double>(shift.y) / first.factor));
  const cv::Rect whole(cv::Point(), first.samples.size());
  const cv::Rect inFirst = whole & (whole + way);
  if (inFirst.empty()) return 0.0;
  const double strength = std::sqrt(Variance(first, inFirst) * Variance(second, inFirst - way));
  return std::sqrt(2 * std::max(0.0, 1.0 - correlation) * strength);
}

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
  if (measure.matches >= kMatchesWorthALook) Judge(result);
  return result;
}

void PairComparison::Judge(FramePair& pair) {
  const double share = static_cast<double>(pair.matches) / pair.matched;
  const auto first = ViewOf(pair.first), second = ViewOf(pair.second);
  pair.doubt = JudgePlacement(*first, *second, pair.shift, share);
  pair.difference = Difference(*first, *second, pair.shift, pair.doubt->agreement);
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
