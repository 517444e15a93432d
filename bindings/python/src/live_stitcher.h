#ifndef JQPYTHON_LIVE_STITCHER_H
#define JQPYTHON_LIVE_STITCHER_H

#include <array>
#include <cstdint>
#include <mutex>
#include <opencv2/core.hpp>
#include <optional>
#include <string>

#include "host/run/stitch_settings.h"
#include "jqimagestitching.h"
#include "verdict.h"

namespace jqpython {

/// A live run as Python keeps it between calls.
struct SavedRun {
  JQStitchingState state;
  jqhost::StitchSettings settings;
  cv::Size frameSize;
  bool grey = false;
};

/// How a mosaic is saved.
struct MosaicFile {
  std::string path;
  std::optional<double> pixelSize;  ///< of a frame, metres
  std::optional<std::array<int, 3>> background;
  bool trim = true;
};

/// One live run. Knows nothing of the interpreter, and every call may come from any thread:
/// calls wait for each other. Errors are those of the library and of the host library;
/// `std::invalid_argument` for a frame that is none of this run.
class LiveStitcher {
 public:
  LiveStitcher(const jqhost::StitchSettings& settings, int undoDepth, std::int64_t memoryLimit);

  /// @param frame 8 bits, 1 or 3 channels; stays the caller's
  Verdict Add(const cv::Mat& frame);

  /// A header on the mosaic; empty before there is one. Whoever holds it may only read, and
  /// growth leaves its pixels where they are.
  cv::Mat Mosaic() const;
  /// The same as a copy, made while no frame is added. @param copy gets the header
  template <typename Copy>
  cv::Mat CopyMosaic(Copy&& copy) const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    const cv::Mat mosaic = m_stitcher.GetMosaic();
    return mosaic.empty() ? mosaic : copy(mosaic);
  }
  /// Minimum inclusive, maximum exclusive, mosaic pixels; nothing before there is a mosaic.
  std::optional<std::array<int, 4>> ContentBox() const;
  std::optional<std::array<int, 4>> PlacedBounds() const;

  bool Undo();
  bool ContinueAt(cv::Point topLeft);
  SavedRun SaveState() const;
  void RestoreState(const SavedRun& saved);

  void Save(const MosaicFile& file) const;

 private:
  void CheckFrame(const cv::Mat& frame) const;

  mutable std::mutex m_mutex;
  jqhost::StitchSettings m_settings;
  JQImageStitching m_stitcher;
  cv::Size m_frameSize;  // of the run; empty before its first frame
  bool m_grey = true;    // whether all frames so far had one channel
};

}  // namespace jqpython

#endif  // JQPYTHON_LIVE_STITCHER_H
