#ifndef JQ_STITCHER_RUN_STATE_H
#define JQ_STITCHER_RUN_STATE_H

#include <atomic>
#include <opencv2/core.hpp>

#include "jqimagestitching.h"
#include "stitcher/frame_pool.h"

/// What the stitcher knows of a run beyond its members: the answers of the
/// accessors that tell what became of a frame.
struct JQImageStitching::RunState {
  JQFrameVerdict verdict;
  cv::Rect placedBounds;
  std::atomic<bool> stopRequested{false};
  /// Number of the reference, one more for each placed frame. 0 once the host has
  /// been handed its pixels or had them recoloured: they may change between calls
  /// then, and the engine compares them every time.
  std::uint64_t referenceId = 0;

  /// To be called when a frame comes in: until the frame is judged its verdict is that
  /// of a failed call, which is left standing by whatever throws.
  void expectFrame();

  /// What the start of a run, live or batch, resets.
  static void startRun(JQImageStitching& stitcher);
  /// Makes the current picture the first frame of the run.
  static void takeFirstFrame(JQImageStitching& stitcher);

  /// Takes one later frame of a run as it was read: lifts its zero samples, judges
  /// and registers it and, when it passes, places it; leaves the verdict. Returns
  /// whether it was placed. All or nothing: when it throws, the stitcher is as before.
  static bool takeFrame(JQImageStitching& stitcher, cv::Mat& newFrame);

  /// Makes the current picture a deep copy of the mosaic's content box; empty
  /// without a mosaic.
  static void trim(JQImageStitching& stitcher);

  /// To be called before the current picture's pixels are handed to the host or
  /// changed for it: the reference may share them.
  static void exposeCurrentFrame(JQImageStitching& stitcher);

 private:
  std::uint64_t m_references = 0;             // numbered so far
  const jqstitching::FramePoolUser m_frames;  // keeps memory for the frames to come

  static void place(JQImageStitching& stitcher, cv::Mat& newFrame);
  // Finds the new reference's features while its pixels are in cache, so that the
  // next frame takes no longer than others.
  static void prepareReference(JQImageStitching& stitcher);
};

#endif  // JQ_STITCHER_RUN_STATE_H
