#ifndef JQ_BLEND_KERNELS_FUSION_WEIGHTS_H
#define JQ_BLEND_KERNELS_FUSION_WEIGHTS_H

#include <cstdint>
#include <opencv2/core.hpp>

#include "blend/kernels/fusion_scratch.h"

namespace jqstitching {

/// The weights of the old content in the fusion of a pair, row by row from the bottom:
/// its share of two distances, to the nearest empty pixel of the old block and of the new
/// frame, whose border counts as empty.
class FusionWeights {
 public:
  /// Reads the frame, and takes all memory.
  FusionWeights(const cv::Mat& newFrame, FusionScratch& scratch);

  /// Reads the old block, which has the frame's size. Throws only where `ReadingMayFail`
  /// is true: there the image library has to tell what is empty.
  void read(const cv::Mat& oldBlock);
  static bool ReadingMayFail(const cv::Mat& oldBlock);

  /// The weights of row r, for rows - 1, rows - 2 and so on, or null when all are 0.
  const std::uint8_t* next(int r);

  FusionScratch& scratch() { return m_scratch; }

 private:
  // Empty pixels inside the border. The border itself counts as empty anyway.
  bool hasHoles(const cv::Mat& frame, std::uint8_t* content) const;
  void mapFrame(const cv::Mat& frame, std::uint8_t* content);

  FusionScratch& m_scratch;
  int m_cols;
  bool m_hasHoles = false;
};

}  // namespace jqstitching

#endif  // JQ_BLEND_KERNELS_FUSION_WEIGHTS_H
