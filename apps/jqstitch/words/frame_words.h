#ifndef JQSTITCH_WORDS_FRAME_WORDS_H
#define JQSTITCH_WORDS_FRAME_WORDS_H

#include <string>

#include "host/run/stitch_settings.h"
#include "host/verdict/frame_result.h"

namespace jqstitch {

/// Why a frame was left out, in one plain sentence; empty for a placed frame.
std::string ReasonText(const jqhost::StitchSettings& settings, const jqhost::FrameResult& frame);

/// What to do about it; may be empty.
std::string AdviceText(const jqhost::StitchSettings& settings, const jqhost::FrameResult& frame);

/// A doubt about a placed frame; mostly empty.
std::string NoteText(const jqhost::FrameResult& frame);

}  // namespace jqstitch

#endif  // JQSTITCH_WORDS_FRAME_WORDS_H
