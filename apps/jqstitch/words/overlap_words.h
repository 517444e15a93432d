#ifndef JQSTITCH_WORDS_OVERLAP_WORDS_H
#define JQSTITCH_WORDS_OVERLAP_WORDS_H

#include <string>

#include "host/record/run_record.h"

namespace jqstitch {

/// What the overlap or motion test looked at and found.
std::string OverlapReason(const jqhost::FrameResult& frame);

/// Advice by cause: another exposure, another focus, steps too large for a live run.
std::string OverlapAdvice(const jqhost::RunRecord& record, const jqhost::FrameResult& frame);
std::string TooFewMatchesAdvice(const jqhost::RunRecord& record, const jqhost::FrameResult& frame);

}  // namespace jqstitch

#endif  // JQSTITCH_WORDS_OVERLAP_WORDS_H
