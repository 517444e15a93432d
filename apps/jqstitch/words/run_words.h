#ifndef JQSTITCH_WORDS_RUN_WORDS_H
#define JQSTITCH_WORDS_RUN_WORDS_H

#include "host/record/words.h"

namespace jqstitch {

/// The words of this program, for the reports that the host writes.
class RunWords : public jqhost::Words {
 public:
  std::string Outcome(const jqhost::RunRecord& record) const override;
  std::string Reason(const jqhost::RunRecord& record,
                     const jqhost::FrameResult& frame) const override;
  std::string Advice(const jqhost::RunRecord& record,
                     const jqhost::FrameResult& frame) const override;
  std::string Note(const jqhost::FrameResult& frame) const override;
};

}  // namespace jqstitch

#endif  // JQSTITCH_WORDS_RUN_WORDS_H
