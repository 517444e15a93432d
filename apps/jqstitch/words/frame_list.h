#ifndef JQSTITCH_WORDS_FRAME_LIST_H
#define JQSTITCH_WORDS_FRAME_LIST_H

#include <string>

#include "host/record/run_record.h"

namespace jqstitch {

/// Every frame with what became of it, one line each; neighbours that were not placed
/// for one cause share a line with their range.
std::string FrameListText(const jqhost::RunRecord& record);

/// Where and how often a live run lost its track, a sentence each; empty when never.
std::string LossText(const jqhost::RunRecord& record);

}  // namespace jqstitch

#endif  // JQSTITCH_WORDS_FRAME_LIST_H
