#ifndef JQHOST_RECORD_RUN_RECORD_H
#define JQHOST_RECORD_RUN_RECORD_H

#include <array>
#include <opencv2/core.hpp>
#include <optional>
#include <string>
#include <vector>

#include "host/assemble/assembly.h"
#include "host/record/truth.h"
#include "host/run/stitch_settings.h"
#include "host/source/sample_depth.h"
#include "host/verdict/frame_result.h"
#include "host/verdict/standing.h"

namespace jqhost {

/// Everything that is told about a run when it is over.
struct RunRecord {
  std::string program;    ///< name and version
  std::string command;    ///< "batch" or "live"
  bool live = false;      ///< else a batch run
  bool fromFiles = true;  ///< else from a video or camera
  StitchSettings settings;
  cv::Size frameSize;    ///< full size
  cv::Size workingSize;  ///< of a frame in the picture: divided by the detection level
  std::vector<FrameResult> frames;
  int announced = 0;               ///< frames of a video that ended before giving so many; else 0
  int given = 0;                   ///< then the frames that it gave
  int skipped = 0;                 ///< passed over because of --every
  std::string stoppedBy;           ///< "Ctrl-C" and the like; empty for a run that came to its end
  std::vector<std::string> notes;  ///< plain sentences for the summary
  double seconds = 0.0;
  SampleSummary samples;  ///< of the frames as they came

  std::string picture;  ///< path; empty when none was written
  cv::Size pictureSize;
  cv::Point firstCorner;  ///< of the first frame in the picture
  std::string trimmedBy;  ///< "content box", "placed frames" or "nothing"
  /// Of a pixel of the picture, in metres; known only where somebody told it.
  std::optional<cv::Size2d> pixelSize;
  std::optional<std::array<int, 3>> background;  ///< red, green, blue in the saved picture
  std::optional<TruthComparison> truth;
  /// Of a set of frames in any order; its frames are `frames`, in the same order.
  std::optional<Assembly> assembly;
};

int CountPlaced(const RunRecord& record);
/// Placed frames whose places cannot be trusted.
int CountDoubtful(const RunRecord& record);
/// Frames taken out again because of that.
int CountTakenBack(const RunRecord& record);
int CountStanding(const RunRecord& record, Standing standing);
/// Whether frames came after the first one and none of them was placed.
bool OnlyFirstPlaced(const RunRecord& record);

enum class Outcome {
  kAllPlaced,
  kAllFollowed,   ///< live: every frame was placed or tracked
  kSomeDoubtful,  ///< the same, but some places cannot be trusted
  kSomeLeftOut,
  kNonePlaced,  ///< no frame besides the first
  kNoPicture,   ///< not even the first
};

Outcome OutcomeOf(const RunRecord& record);
/// "all placed", "all followed", "some doubtful", "some left out", "none placed" or
/// "no picture".
const char* OutcomeName(Outcome outcome);

/// Corner of a placed frame in the picture.
cv::Point CornerInPicture(const RunRecord& record, const FrameResult& frame);

/// How the frames are called in lists: without their folder when all share one.
std::vector<std::string> ShortNames(const std::vector<FrameResult>& frames);

}  // namespace jqhost

#endif  // JQHOST_RECORD_RUN_RECORD_H
