#ifndef JQHOST_JOURNAL_JOURNAL_STEPS_H
#define JQHOST_JOURNAL_JOURNAL_STEPS_H

#include <optional>
#include <string>
#include <vector>

#include "host/journal/journal_entries.h"

namespace jqhost {

/// One thing that a run did and that was not taken back: a frame that it placed, or a
/// place to go on from.
struct JournalStep {
  int number = 0;
  cv::Point place;
  std::optional<FrameEntry> frame;  ///< none: a place to go on from
  int before = 0;                   ///< number of the step before it when it was recorded
};

/// What is left of a run, in order.
///
/// A step hangs on another one when it was measured by its pixels:
/// - a frame on the step right before it, which it was measured against;
/// - a place to go on from on every frame before it that covers a part of the frame-sized
///   block there.
/// What hangs on something that hangs on a step hangs on that step too. So in a run that
/// never went on elsewhere everything after a frame hangs on it.
class JournalSteps {
 public:
  /// @param level working-scale divisor
  explicit JournalSteps(int level) : m_level(level) {}

  /// Takes the next entry of the log; pictures change nothing. Raises `InputError` where it
  /// cannot come next.
  void Take(const JournalEntry& entry);

  /// Takes these numbers out. Raises `InputError` where one is not there, or naming the
  /// frames that hang on them. Places to go on from of which only they made use go along.
  /// @return the numbers of all that was taken out, the last one first
  std::vector<int> Drop(const std::vector<int>& numbers);
  /// Takes out all steps behind this frame; returns as above. Raises `InputError` where it
  /// is not there.
  std::vector<int> KeepUntil(int number);

  const std::vector<JournalStep>& Steps() const { return m_steps; }
  /// A frame at the working scale; empty before the first one.
  cv::Size WorkingSize() const;

 private:
  void TakeFrame(const FrameEntry& frame);
  void TakeContinue(const ContinueEntry& entry);
  bool HangsOnAny(std::size_t step, const std::vector<bool>& gone) const;

  int m_level;
  std::vector<JournalStep> m_steps;
};

}  // namespace jqhost

#endif  // JQHOST_JOURNAL_JOURNAL_STEPS_H
