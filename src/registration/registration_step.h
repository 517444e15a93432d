#ifndef JQ_REGISTRATION_REGISTRATION_STEP_H
#define JQ_REGISTRATION_REGISTRATION_STEP_H

#include "engine/workspace.h"
#include "jqstitchingalgorithm.h"

namespace jqstitching {

/// Whether two pictures are of the one kind that the shared path takes: 8-bit
/// with 1 or 3 channels, both alike.
bool CanRegisterShared(const cv::Mat& first, const cv::Mat& second);

/// Whether registration found corners in each picture of a pair, and how many it matched
/// with one of the other picture. Where it found none in either, it leaves its outputs as
/// they were.
struct CornersFound {
  bool first = false, second = false;
  int matched = 0;
};

/// `JQStitchingAlgorithm::ImageMosaicFun` for a caller that wants to know more.
CornersFound Register(JQStitchingAlgorithm& engine, Workspace& workspace, cv::Mat first,
                      cv::Mat second, int& offsetX, int& offsetY, int& supportCount);

/// The same for two pictures of the shared kind, with the second picture's grey
/// pictures already made (`current.half` is needed below level 3) and the first one's
/// features remembered; for `firstId` see `ReferenceFeatures::update`.
CornersFound RegisterShared(JQStitchingAlgorithm& engine, Workspace& workspace,
                            const cv::Mat& first, std::uint64_t firstId, const GreyAndHalf& current,
                            int& offsetX, int& offsetY, int& supportCount);

/// Finds and remembers the features of the reference with this number.
void PrepareReference(JQStitchingAlgorithm& engine, const cv::Mat& reference, std::uint64_t id);

}  // namespace jqstitching

#endif  // JQ_REGISTRATION_REGISTRATION_STEP_H
