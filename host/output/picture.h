#ifndef JQHOST_OUTPUT_PICTURE_H
#define JQHOST_OUTPUT_PICTURE_H

#include <array>
#include <opencv2/core.hpp>
#include <optional>
#include <string>

class JQImageStitching;

namespace jqhost {

/// The picture of a run. The pixels may belong to the stitcher: read only, valid
/// until its next call.
struct Picture {
  cv::Mat image;
  cv::Point origin;           ///< of the picture in the mosaic
  std::string trimmedBy;      ///< "content box", "placed frames" or "nothing"
  bool isFirstFrame = false;  ///< there is no mosaic, so this is the first frame alone
};

/// The mosaic so far, cut to the placed frames or whole. Does not disturb a run.
/// Empty before the mosaic exists.
Picture TakePicture(const JQImageStitching& stitcher, bool trim);

/// The mosaic cut as the stitcher's own trimming cuts it, but without the copy that the
/// stitcher would take: the same pixels where they lie. Where its content box misses a
/// part of the frames, the placed frames' own bounds are taken.
Picture TrimPicture(const JQImageStitching& stitcher);

/// Whether the stitcher's content box is exactly what the placed frames cover.
bool IsContentBoxExact(const JQImageStitching& stitcher);

/// The picture with every pure black pixel (which no frame leaves) in the colour
/// red, green, blue. A copy, unless there is nothing to change.
cv::Mat WithBackground(const cv::Mat& image, const std::optional<std::array<int, 3>>& colour);

/// A picture of frames that were all grey, with one channel; as it is where the
/// background has a colour.
cv::Mat AsGrey(const cv::Mat& image, const std::optional<std::array<int, 3>>& background);

/// The picture shrunk to at most `longest` pixels a side, where pure black is shown in
/// the colour: as `WithBackground` first and shrinking then, within one grey level, but
/// without a copy of the whole. (Shrinking first would mix the black into the edges.)
cv::Mat Shrink(const cv::Mat& image, int longest,
               const std::optional<std::array<int, 3>>& background = std::nullopt);

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_PICTURE_H
