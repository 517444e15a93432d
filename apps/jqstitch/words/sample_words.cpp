#include "words/sample_words.h"

namespace jqstitch {

std::vector<std::string> SampleNotes(const jqhost::FramePreparation& preparation) {
  std::vector<std::string> notes;
  const jqhost::SampleSummary& samples = preparation.Summary();
  const std::string bits = std::to_string(samples.bits);
  if (samples.wide) {
    notes.push_back("Samples of 16 bits, " + bits + " of them significant, " +
                    (samples.found ? "as the first frame tells" : "as --depth says"));
  }
  if (samples.saturatedFrames > 0) {
    notes.push_back("Brighter than " + bits + " bits can tell, and cut off there: samples in " +
                    std::to_string(samples.saturatedFrames) +
                    (samples.saturatedFrames == 1 ? " frame" : " frames") +
                    "; give the camera's --depth");
  }
  if (preparation.UnknownPixels() > 0) {
    notes.push_back("The flat field is too dark at " + std::to_string(preparation.UnknownPixels()) +
                    " pixels to tell the light there; they are not evened out");
  }
  return notes;
}

}  // namespace jqstitch
