#include "verdict.h"

#include "words.h"

namespace jqpython {

Verdict MakeVerdict(const jqhost::FrameResult& frame, int detectLevel) {
  Verdict verdict;
  verdict.placed = frame.Placed();
  verdict.cause = CauseName(frame.cause);
  verdict.sentence = Sentence(frame, detectLevel);
  if (frame.measured.registered) {
    verdict.offset = frame.measured.offset;
    verdict.matches = frame.measured.matchCount;
    verdict.shiftShare = frame.shiftShare;
  }
  return verdict;
}

}  // namespace jqpython
