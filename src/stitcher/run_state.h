#ifndef JQ_STITCHER_RUN_STATE_H
#define JQ_STITCHER_RUN_STATE_H

#include <atomic>
#include <memory>
#include <opencv2/core.hpp>

#include "jqglobalclass.h"
#include "jqimagestitching.h"
#include "stitcher/frame_pool.h"
#include "stitcher/undo_history.h"

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
  jqstitching::UndoHistory undo;
  std::int64_t memoryLimit = 0;  // 0 or less: none
  /// A record that waits for the start of a run.
  std::unique_ptr<_tagJQIMG> spareRecord;

  /// To be called when a frame comes in: until the frame is judged its verdict is that
  /// of a failed call, which is left standing by whatever throws.
  void expectFrame();
  /// To be called before the mosaic becomes this large: the verdict tells the size until
  /// the frame is judged. Raises `cv::Exception` beyond the memory limit.
  void expectMosaic(std::int64_t cols, std::int64_t rows, int channels);

  /// What the three ints of a live run's first frame set.
  static void setLive(JQImageStitching& stitcher, int overlapMode, int detectLevel,
                      int cornerBudget);
  /// What the start of a run, live or batch, resets.
  static void startRun(JQImageStitching& stitcher);
  /// Makes the current picture the first frame of the run.
  static void takeFirstFrame(JQImageStitching& stitcher);

  /// Takes one later frame of a run as it was read: lifts its zero samples, judges
  /// and registers it and, when it passes, places it; leaves the verdict. Returns
  /// whether it was placed. All or nothing: when it throws, the stitcher is as before.
  /// A `step` given gets what the frame paints over.
  static bool takeFrame(JQImageStitching& stitcher, cv::Mat& newFrame,
                        JQStitchingUndoStep* step = nullptr);
  /// Numbers the reference that has just been put in place, and describes it.
  static void newReference(JQImageStitching& stitcher);
  /// Finds the reference's features while its pixels are in cache, so that the next frame
  /// takes no longer than others. For a reference at the working scale.
  static void describeReference(JQImageStitching& stitcher);

  /// Makes the current picture a deep copy of the mosaic's content box; empty
  /// without a mosaic.
  static void trim(JQImageStitching& stitcher);

  /// To be called before the current picture's pixels are handed to the host or
  /// changed for it: the reference may share them.
  static void exposeCurrentFrame(JQImageStitching& stitcher);

  /// What a frame may replace, as headers on the stitcher's own pixels, and back again.
  static JQStitchingMoment momentOf(const JQImageStitching& stitcher);
  static void returnTo(JQImageStitching& stitcher, const JQStitchingMoment& moment);
  /// A step with the present moment and mosaic size, where steps are kept.
  static jqstitching::UndoHistory::Steps prepareUndo(const JQImageStitching& stitcher);
  /// Makes the stitcher's record show the mosaic, or the current picture before there is
  /// one. The host's own bytes of the record stay.
  static void showRun(JQImageStitching& stitcher);

 private:
  std::uint64_t m_references = 0;             // numbered so far
  const jqstitching::FramePoolUser m_frames;  // keeps memory for the frames to come

  static void place(JQImageStitching& stitcher, cv::Mat& newFrame, JQStitchingUndoStep* step);
};

#endif  // JQ_STITCHER_RUN_STATE_H
