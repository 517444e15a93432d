#ifndef JQHOST_ASSEMBLE_PAIR_CHOICE_H
#define JQHOST_ASSEMBLE_PAIR_CHOICE_H

#include <functional>
#include <set>
#include <utility>
#include <vector>

#include "host/assemble/place_frames.h"

namespace jqhost {

/// Two frames to compare, the smaller number first.
using PairToCompare = std::pair<std::size_t, std::size_t>;

/// Says which pairs are compared, round by round.
///
/// Up to 60 frames without a hint: all, at once. Otherwise first those that a hint calls
/// neighbours, or without one each frame with the next in the list. Then, round by round:
/// - those that overlap by a tenth along both axes where their frames are placed, of each
///   frame at most the 24 nearest;
/// - where there is no such pair left: each frame outside the largest island with 60 more
///   frames of other islands, at most 400 in all.
/// So the order of a long list decides how soon the work is done, and not what is found, as
/// long as no frame needs more than 400 others.
class PairChoice {
 public:
  static constexpr std::size_t kAllUpTo = 60;

  /// @param listOrder of each frame, its place in the list of files
  /// @param neighbours whether a hint says that two frames are; empty without hints
  PairChoice(std::vector<std::size_t> listOrder, cv::Size frame,
             std::function<bool(std::size_t, std::size_t)> neighbours);

  std::vector<PairToCompare> First();
  /// Empty when nothing is left to compare.
  std::vector<PairToCompare> Next(const Places& places);

 private:
  std::vector<PairToCompare> Likely(const Places& places);
  std::vector<PairToCompare> Across(const Places& places);
  std::vector<PairToCompare> NotYetCompared(const std::vector<PairToCompare>& pairs);

  const std::vector<std::size_t> m_listOrder;
  const cv::Size m_frame;
  const std::function<bool(std::size_t, std::size_t)> m_neighbours;
  std::set<PairToCompare> m_compared;
  std::vector<std::size_t> m_tried;  // across islands, of each frame
};

}  // namespace jqhost

#endif  // JQHOST_ASSEMBLE_PAIR_CHOICE_H
