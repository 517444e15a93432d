#ifndef JQSTITCH_WORDS_FRAME_WORDS_H
#define JQSTITCH_WORDS_FRAME_WORDS_H

#include <string>

#include "host/record/run_record.h"

namespace jqstitch {

/// Why a frame was left out, in one plain sentence; empty for a placed frame.
/// @param record the run so far: its settings, its source, the frames before
std::string ReasonText(const jqhost::RunRecord& record, const jqhost::FrameResult& frame);

/// The same in a few words, with the number that counts: "too few matches (3 of 11)".
std::string ShortReason(const jqhost::FrameResult& frame);

/// What to do about it; may be empty.
std::string AdviceText(const jqhost::RunRecord& record, const jqhost::FrameResult& frame);

/// A doubt about a placed frame; mostly empty.
std::string NoteText(const jqhost::FrameResult& frame);

}  // namespace jqstitch

#endif  // JQSTITCH_WORDS_FRAME_WORDS_H
