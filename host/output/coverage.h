#ifndef JQHOST_OUTPUT_COVERAGE_H
#define JQHOST_OUTPUT_COVERAGE_H

#include <vector>

#include "host/output/pixel_source.h"

namespace jqhost {

struct RunRecord;

/// The mask of a picture: 255 where a frame was placed, else 0. It is told from the places
/// of the frames and not from what their pixels look like.
class CoveragePixels : public PixelSource {
 public:
  /// @param places of the frames in the picture; parts outside it are left away
  CoveragePixels(cv::Size picture, std::vector<cv::Rect> places);
  /// Of the frames that the record says are placed, in its picture.
  explicit CoveragePixels(const RunRecord& record);

  cv::Size Size() const override { return m_size; }
  int Channels() const override { return 1; }
  void Read(const cv::Rect& area, cv::Mat& pixels) const override;

 private:
  cv::Size m_size;
  std::vector<cv::Rect> m_places;
};

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_COVERAGE_H
