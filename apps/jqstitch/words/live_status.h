#ifndef JQSTITCH_WORDS_LIVE_STATUS_H
#define JQSTITCH_WORDS_LIVE_STATUS_H

#include <string>

#include "host/record/run_record.h"
#include "host/verdict/standing.h"

namespace jqstitch {

/// What an operator needs to know now, in one line: whether the frame in hand was
/// placed or is tracked, or since when the track is lost, why, and where to go back
/// to; then the counts and the memory.
std::string StatusText(const jqhost::RunRecord& record, const jqhost::Track& track,
                       const jqhost::FrameResult& frame, std::int64_t memory);

}  // namespace jqstitch

#endif  // JQSTITCH_WORDS_LIVE_STATUS_H
