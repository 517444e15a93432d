#ifndef JQHOST_ASSEMBLE_ASSEMBLY_H
#define JQHOST_ASSEMBLE_ASSEMBLY_H

#include <opencv2/core.hpp>
#include <optional>
#include <string>
#include <vector>

#include "host/verdict/doubt/placement_doubt.h"

namespace jqhost {

/// What a compared pair of frames counts for.
enum class PairState {
  kUsed,           ///< holds its two frames together
  kTooFewMatches,  ///< and nothing else predicts its shift
  kShiftTooLarge,  ///< more than 90 % of the frame, and nothing else predicts its shift
  kContradicted,   ///< another shift agrees better
  kRepeats,        ///< other shifts agree about as well, and nothing else tells which is right
  kUnsupported,    ///< the frames agree nowhere more than chance would have it
  kThrownOut,      ///< it looked sound, but does not close the loops that it is part of
};

/// The state as reports and events spell it, for example "too few matches".
const char* PairStateName(PairState state);

/// Two frames that were compared. Lengths are pixels of the working scale.
struct FramePair {
  std::size_t first = 0;   ///< index of the frame that was measured against
  std::size_t second = 0;  ///< index of the frame that was measured
  /// Column and row of `first` at which pixel (0, 0) of `second` lies, as the engine
  /// measures it, and the mean over all agreeing matches.
  cv::Point shift;
  cv::Point2d fineShift;
  int matches = 0;  ///< that agree with the shift
  int matched = 0;  ///< corners that found a partner at all
  /// How far the shift can be trusted; none where there were too few matches to look.
  std::optional<PlacementDoubt> doubt;
  /// What the two frames differ by where they overlap, seen small and without the light's slow
  /// changes: root of the mean square, grey levels. Known with the doubt.
  double difference = 0.0;
  PairState state = PairState::kTooFewMatches;
  /// Distance between `fineShift` and what the positions of the two frames say; none
  /// where they do not lie in one island.
  std::optional<double> residual;

  double Confidence() const { return doubt ? doubt->confidence : 0.0; }
};

/// One frame of the set.
struct AssembledFrame {
  std::string name;     ///< as people know it: the path, or path and page
  cv::Size size;        ///< pixels of the file; empty where it could not be read
  bool usable = false;  ///< read, and of the size of the others
  int corners = 0;
  /// Top-left corner in its island, exact and in whole pixels; none for a frame that
  /// nothing holds.
  std::optional<cv::Point2d> place;
  std::optional<cv::Point> position;
  int island = 0;           ///< from 1, the picture's first; 0: nothing holds it
  int pairs = 0;            ///< used ones
  double residual = 0.0;    ///< the largest of its used pairs
  double confidence = 0.0;  ///< the highest of its used pairs
  /// Index of the pair that comes nearest to holding it: used ones first, then by
  /// confidence, then by matches. None where no pair had a match.
  std::optional<std::size_t> bestPair;
};

/// Frames that hold together. The first frame of the list that belongs to it lies at (0, 0).
struct Island {
  std::vector<std::size_t> frames;  ///< in the order of the list
  cv::Rect bounds;                  ///< of its frames; the picture's pixel (0, 0) is its corner
};

/// How well loops of three and four used pairs close, in pixels.
struct LoopClosure {
  std::size_t loops = 0;
  double median = 0.0;
  double largest = 0.0;
};

/// A set of frames, put together.
struct Assembly {
  std::vector<AssembledFrame> frames;  ///< in the order of the list
  std::vector<FramePair> pairs;        ///< all that were compared, by `first` and `second`
  /// Of two frames and more (of a single one where none hold together), the largest
  /// first; of equally large ones that with the earlier frame.
  std::vector<Island> islands;
  LoopClosure loops;
  bool stopped = false;  ///< before all pairs were compared
};

}  // namespace jqhost

#endif  // JQHOST_ASSEMBLE_ASSEMBLY_H
