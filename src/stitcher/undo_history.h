#ifndef JQ_STITCHER_UNDO_HISTORY_H
#define JQ_STITCHER_UNDO_HISTORY_H

#include <cstddef>
#include <list>

#include "jqstitchingstate.h"

namespace jqstitching {

/// The steps of a live run that can be taken back.
class UndoHistory {
 public:
  using Steps = std::list<JQStitchingUndoStep>;

  /// Drops the oldest steps beyond the new depth.
  void setDepth(size_t depth);
  size_t depth() const { return m_depth; }
  /// Oldest first.
  const Steps& steps() const { return m_steps; }

  /// A list of one empty step to be filled in, or of none where nothing is kept.
  Steps prepare() const { return Steps(m_depth > 0 ? 1 : 0); }
  /// Appends what was prepared; cannot fail, so that it may follow the change itself.
  void add(Steps&& step) noexcept;

  JQStitchingUndoStep& newest() { return m_steps.back(); }
  void dropNewest() { m_steps.pop_back(); }
  void clear() { m_steps.clear(); }

 private:
  void shorten() noexcept;

  size_t m_depth = 0;
  Steps m_steps;
};

}  // namespace jqstitching

#endif  // JQ_STITCHER_UNDO_HISTORY_H
