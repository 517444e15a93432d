#ifndef JQPYTHON_WORDS_H
#define JQPYTHON_WORDS_H

#include <string>

#include "host/record/words.h"

namespace jqpython {

/// What became of a frame, in one sentence.
/// @param detectLevel of the run: it scales the limits of the shift
std::string Sentence(const jqhost::FrameResult& frame, int detectLevel);

/// The words of the module, for the reports that the host writes.
class ModuleWords : public jqhost::Words {
 public:
  std::string Outcome(const jqhost::RunRecord& record) const override;
  std::string Reason(const jqhost::RunRecord& record,
                     const jqhost::FrameResult& frame) const override;
  std::string Advice(const jqhost::RunRecord& record,
                     const jqhost::FrameResult& frame) const override;
  std::string Note(const jqhost::FrameResult& frame) const override;
};

}  // namespace jqpython

#endif  // JQPYTHON_WORDS_H
