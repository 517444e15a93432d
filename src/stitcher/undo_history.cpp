#include "stitcher/undo_history.h"

namespace jqstitching {

void UndoHistory::setDepth(size_t depth) {
  m_depth = depth;
  shorten();
}

void UndoHistory::add(Steps&& step) noexcept {
  m_steps.splice(m_steps.end(), step);
  shorten();
}

void UndoHistory::shorten() noexcept {
  while (m_steps.size() > m_depth) m_steps.pop_front();
}

}  // namespace jqstitching
