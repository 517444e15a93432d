#include "host/verdict/doubt/doubt_chain.h"

#include <new>
#include <system_error>
#include <utility>

namespace jqhost {

void DoubtChain::Begin(std::function<ReducedFrame()> reduce, cv::Point shift,
                       double agreeingShare) {
  if (InHand()) Finish();
  const auto judge = [this, reduce = std::move(reduce), shift, agreeingShare] {
    return Judge(reduce, shift, agreeingShare);
  };
  try {
    m_answer = std::async(std::launch::async, judge);
  } catch (const std::system_error&) {
    // No more threads to be had: the caller's does it, when it asks.
    m_answer = std::async(std::launch::deferred, judge);
  }
}

PlacementDoubt DoubtChain::Finish() {
  return m_answer.get();
}

PlacementDoubt DoubtChain::Judge(const std::function<ReducedFrame()>& reduce, cv::Point shift,
                                 double agreeingShare) {
  PlacementView view;
  PlacementDoubt doubt = JudgePlacement(view, view, shift);  // unsupported
  try {
    view = MakePlacementView(reduce());
    doubt = JudgePlacement(m_placed, view, shift, agreeingShare);
  } catch (const std::bad_alloc&) {
  } catch (const cv::Exception&) {
  }
  m_before = std::move(m_placed);
  m_placed = std::move(view);
  return doubt;
}

}  // namespace jqhost
