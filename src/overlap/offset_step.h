#ifndef JQ_OVERLAP_OFFSET_STEP_H
#define JQ_OVERLAP_OFFSET_STEP_H

#include "engine/workspace.h"
#include "jqstitchingalgorithm.h"
#include "overlap/frame_measures.h"

namespace jqstitching {

/// What a caller knows of the frames and the engine cannot see.
struct KnownOfFrames {
  /// The new frame's zero samples are still to be lifted: done here, in the pass
  /// that makes its grey pictures.
  bool unlifted = false;
  /// The reference's number, or 0; see `ReferenceFeatures::update`.
  std::uint64_t referenceId = 0;
};

/// `JQStitchingAlgorithm::StitchingImage_offset` for a caller that knows more and
/// wants to know more.
FrameMeasures OffsetStep(JQStitchingAlgorithm& engine, Workspace& workspace,
                         const KnownOfFrames& known, int frameIndex, cv::Mat refImage,
                         cv::Mat prevImage, cv::Mat curImage, cv::Point& minPoint,
                         cv::Point& maxPoint, cv::Mat& mosaicImage, stitchflags& flags);

}  // namespace jqstitching

#endif  // JQ_OVERLAP_OFFSET_STEP_H
