#ifndef JQSTITCH_WORDS_SAMPLE_WORDS_H
#define JQSTITCH_WORDS_SAMPLE_WORDS_H

#include <string>
#include <vector>

#include "host/source/frame_preparation.h"

namespace jqstitch {

/// What the summary says about the samples of the frames: their depth, those cut off,
/// what the flat field does not tell. Empty for plain 8-bit frames.
std::vector<std::string> SampleNotes(const jqhost::FramePreparation& preparation);

}  // namespace jqstitch

#endif  // JQSTITCH_WORDS_SAMPLE_WORDS_H
