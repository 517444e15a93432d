#ifndef JQFRAMEVERDICT_H
#define JQFRAMEVERDICT_H

#include <cstdint>
#include <limits>
#include <opencv2/core.hpp>

/// Why a frame is part of the mosaic or is not. A frame that is left out can have
/// several reasons: the one that stands first in this list is given, since without
/// corners nothing is measured, and a person mends the rest in this order. The numbers
/// of `JQFrameVerdict` tell the others.
enum class JQFrameCause : std::int32_t {
  kNone,                  ///< no frame was taken yet
  kCallFailed,            ///< the call raised an exception; the run is as before it
  kFirstFrame,            ///< the first frame of a run, which the mosaic starts with
  kPlaced,                ///< placed
  kNoCornersInFrame,      ///< registration found no corners in the frame
  kNoCornersInReference,  ///< nor any in the frame against which it is measured
  kOverlapTestFailed,     ///< the overlap test or the motion test turned the frame down
  kTooFewMatches,         ///< fewer than `JQFrameVerdict::kMatchesNeeded`
  kShiftTooSmall,         ///< not more than 1 - `JQFrameVerdict::kMostOverlap`
  kShiftTooLarge,         ///< not less than 1 - `JQFrameVerdict::kLeastOverlap`
};

/// What became of one frame, and the numbers by which it was judged.
struct JQFrameVerdict {
  /// What a placement needs beside the overlap or motion test: this many matches, and
  /// a `shiftShare` strictly between 1 - `kMostOverlap` and 1 - `kLeastOverlap`, in
  /// single precision.
  static constexpr std::int32_t kMatchesNeeded = 11;
  static constexpr float kLeastOverlap = 0.1f;
  static constexpr float kMostOverlap = 0.9f;
  /// Stands in every floating-point number below that was not measured.
  static constexpr float kNotMeasured = std::numeric_limits<float>::quiet_NaN();

  JQFrameCause cause = JQFrameCause::kNone;

  /// Whether both frames of the pair show corners, so that the next three numbers were
  /// measured on this frame. Without corners they are not, while the stitch record keeps
  /// what an earlier frame left: in a batch run a frame can be placed by its
  /// predecessor's numbers.
  bool registered = false;
  std::int32_t matchCount = 0;  ///< match pairs that agree with the offset
  cv::Point offset;             ///< against the reference, pixels of the working scale
  /// The larger component of the offset, in pixels of the working scale, divided by the
  /// frame's columns (by its rows where the components are equal or the vertical one is
  /// larger) in camera pixels. The field of view has moved by the detection level times
  /// this share.
  float shiftShare = kNotMeasured;

  /// The overlap test compares the frame with the mosaic where the last frame was placed,
  /// or at the offset that the frame before left in the record. Each difference passes
  /// below its limit. One that could not change the result any more is not measured: the
  /// definition where the brightness fails, both where that offset leaves the frame.
  float brightness = kNotMeasured;  ///< mean difference in grey levels
  float brightnessLimit = kNotMeasured;
  float definition = kNotMeasured;  ///< difference in sharpness; NaN too without detail
  float definitionLimit = kNotMeasured;

  /// The motion test: mean difference in grey levels from the frame before, truncated to
  /// a whole number; passes below its limit.
  float motion = kNotMeasured;
  float motionLimit = kNotMeasured;

  /// Corners of the two frames that were paired because they look alike, before it was
  /// asked which pairs agree: `matchCount` of them do. 0 unless `registered`.
  std::int32_t pairCount = 0;

  /// Bytes that the mosaic would have needed, where a call failed that was to start or to
  /// grow it: more than the memory limit or more than could be had. Otherwise 0.
  std::int64_t mosaicBytesNeeded = 0;
};

#endif  // JQFRAMEVERDICT_H
