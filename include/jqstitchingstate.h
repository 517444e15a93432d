#ifndef JQSTITCHINGSTATE_H
#define JQSTITCHINGSTATE_H

#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

#include "jqframeverdict.h"
#include "jqstitchingalgorithm.h"

/// What every frame of a live run may replace, beside the mosaic itself. Positions are
/// mosaic pixels.
struct JQStitchingMoment {
  /// The picture against which the next frame is measured: the first frame in camera
  /// pixels until a frame is placed, then a block of the mosaic.
  cv::Mat reference;
  /// The current picture, which `GetImageStitching` shows: the newest frame as a rule.
  /// A header on the pixels of `reference` where the run's two share theirs.
  cv::Mat current;
  cv::Point contentMin;   ///< `GetContentMin`
  cv::Point contentMax;   ///< `GetContentMax`
  cv::Rect placedBounds;  ///< `GetPlacedBounds`
  stitchflags record;     ///< `GetStitchFlags`, with the position
  JQFrameVerdict verdict;
  std::int32_t frameCount = 0;    ///< 0 exactly until the mosaic exists
  bool lastFrameAccepted = true;  ///< the last answer of the acceptance test
};

/// One placed frame, or one `ContinueAt`, that can be taken back.
struct JQStitchingUndoStep {
  JQStitchingMoment before;
  cv::Size mosaicSize;  ///< before; empty where the step started the mosaic
  cv::Point moved;      ///< by how much growth moved the mosaic's content
  cv::Rect covered;     ///< the part of the mosaic before that was painted over
  cv::Mat block;        ///< the pixels that were there; of `covered`'s size
};

/// All that a live run consists of, as plain values that a host can keep, copy and write
/// to a file. Every picture is 8-bit with 3 channels. The matrices that `SaveState` fills in belong
/// to this struct alone; copies of the struct share them.
///
/// Two settings of the stitcher, `undoDepth` and `memoryLimit`, come along. The canvas,
/// `m_fileList` and the host's own bytes of the image record are the host's and do not.
struct JQStitchingState {
  bool started = false;  ///< false: no live run, and all below but the settings as it is here

  // The three ints of the first frame.
  std::int32_t overlapMode = 0;
  std::int32_t detectLevel = 1;
  std::int32_t cornerBudget = 8;

  cv::Size frameSize;  ///< one frame at the working scale; empty without a mosaic
  cv::Mat mosaic;      ///< empty before it exists
  JQStitchingMoment now;

  std::int32_t undoDepth = 0;             ///< `SetUndoDepth`
  std::vector<JQStitchingUndoStep> undo;  ///< oldest first
  std::int64_t memoryLimit = 0;           ///< `SetMemoryLimit`; bytes
};

#endif  // JQSTITCHINGSTATE_H
