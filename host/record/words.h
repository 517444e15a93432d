#ifndef JQHOST_RECORD_WORDS_H
#define JQHOST_RECORD_WORDS_H

#include <string>

#include "host/record/run_record.h"

namespace jqhost {

/// The sentences with which a program tells people what the record holds as causes
/// and numbers. Reports ask for them.
class Words {
 public:
  virtual ~Words() = default;
  /// How the run ended, such as "All placed: 12 of 12 frames".
  virtual std::string Outcome(const RunRecord& record) const = 0;
  /// Why a frame was left out, in one plain sentence; empty for a placed frame.
  virtual std::string Reason(const RunRecord& record, const FrameResult& frame) const = 0;
  /// What to do about it; may be empty.
  virtual std::string Advice(const RunRecord& record, const FrameResult& frame) const = 0;
  /// A doubt about a placed frame; mostly empty.
  virtual std::string Note(const FrameResult& frame) const = 0;
};

}  // namespace jqhost

#endif  // JQHOST_RECORD_WORDS_H
