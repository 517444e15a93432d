#include "words/run_words.h"

#include "words/frame_words.h"
#include "words/summary.h"

namespace jqstitch {

std::string RunWords::Outcome(const jqhost::RunRecord& record) const {
  return OutcomeText(record);
}

std::string RunWords::Reason(const jqhost::RunRecord& record,
                             const jqhost::FrameResult& frame) const {
  return ReasonText(record, frame);
}

std::string RunWords::Advice(const jqhost::RunRecord& record,
                             const jqhost::FrameResult& frame) const {
  return AdviceText(record, frame);
}

std::string RunWords::Note(const jqhost::FrameResult& frame) const {
  return NoteText(frame);
}

}  // namespace jqstitch
