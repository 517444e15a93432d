#ifndef JQHOST_ASSEMBLE_PAIR_COMPARISON_H
#define JQHOST_ASSEMBLE_PAIR_COMPARISON_H

#include <map>
#include <memory>
#include <mutex>
#include <tuple>
#include <vector>

#include "host/assemble/assembly.h"
#include "host/assemble/frame_set.h"
#include "host/assemble/loops.h"
#include "host/assemble/pair_choice.h"

namespace jqhost {

/// Compares pairs of frames: registers them, and looks how far the shift can be trusted.
class PairComparison {
 public:
  /// @param frames must outlive the comparison; those compared have one size
  PairComparison(const std::vector<const SetFrame*>& frames, const FrameSetSettings& settings);

  /// The pairs in their order, spread over threads with an engine each; the result does
  /// not depend on their number. After a requested stop those that were not compared are
  /// left away. `first` and `second` of a result are numbers of `frames`.
  std::vector<FramePair> Compare(const std::vector<PairToCompare>& pairs, const StopToken& stop,
                                 const std::function<void(std::size_t)>& progress);

  /// Whether two frames agree with each other when the second is placed at this shift, as
  /// the doubt sees it. An overlap of less than a fifth of the frame is too little.
  SideView LookAt(std::size_t first, std::size_t second, cv::Point2d shift);

 private:
  FramePair CompareOne(JQStitchingAlgorithm& engine, const PairToCompare& pair);
  void Judge(FramePair& pair);
  std::shared_ptr<const PlacementView> ViewOf(std::size_t frame);

  const std::vector<const SetFrame*>& m_frames;
  const int m_threads;
  std::vector<JQStitchingAlgorithm> m_engines;
  // Two frames and a shift, which many ways lead to within a pixel or two.
  std::map<std::tuple<std::size_t, std::size_t, int, int>, SideView> m_lookedAt;
  // 1 MB each; of larger sets they are made anew for each pair.
  std::mutex m_viewsMutex;
  std::vector<std::shared_ptr<const PlacementView>> m_views;
};

}  // namespace jqhost

#endif  // JQHOST_ASSEMBLE_PAIR_COMPARISON_H
