#ifndef JQHOST_VERDICT_DOUBT_DOUBT_CHAIN_H
#define JQHOST_VERDICT_DOUBT_DOUBT_CHAIN_H

#include <functional>
#include <future>
#include <opencv2/core.hpp>

#include "host/verdict/doubt/placement_doubt.h"

namespace jqhost {

/// Judges the placements of a run, each against the one before, on another thread while
/// the run goes on. At most one is in hand, so that the order is that of the placements
/// and the answers do not depend on who is faster. To be used from one thread at a time.
class DoubtChain {
 public:
  /// @param first the frame that the first placement is compared with
  explicit DoubtChain(const ReducedFrame& first) : m_placed(MakePlacementView(first)) {}

  /// Begins with a frame that was placed; waits for the one before.
  /// @param reduce gives the frame; called on the other thread
  /// @param shift from the frame placed before, frame pixels
  /// @param agreeingShare of the matched pairs, those that agree with the shift
  void Begin(std::function<ReducedFrame()> reduce, cv::Point shift, double agreeingShare = 1.0);

  /// Whether one was begun and not yet finished.
  bool InHand() const { return m_answer.valid(); }
  /// The answer to the one in hand; waits for it. A placement that could not be judged
  /// for want of memory is unsupported.
  PlacementDoubt Finish();
  /// The placement finished last was taken out again: the next one is compared with the
  /// one before it.
  void TakeBack() { m_placed = m_before; }

 private:
  PlacementDoubt Judge(const std::function<ReducedFrame()>& reduce, cv::Point shift,
                       double agreeingShare);

  PlacementView m_placed;  // of the frame placed last
  PlacementView m_before;  // of the one before
  // The last member: its destructor waits for the thread, which uses the others.
  std::future<PlacementDoubt> m_answer;
};

}  // namespace jqhost

#endif  // JQHOST_VERDICT_DOUBT_DOUBT_CHAIN_H
