#include "overlap/frame_tests.h"

#include <algorithm>

#include "overlap/kernels/motion.h"
#include "overlap/kernels/overlap_extraction.h"
#include "overlap/part_quality.h"

namespace jqstitching {
namespace {

// The frame's part of the overlap, halved: the whole frame's half where the part
// is the whole frame.
cv::Mat HalfOfPart(const GreyAndHalf& frame, const Overlap& overlap, const stitchflags& record,
                   QualityScratch& scratch) {
  if (overlap.second.size() == frame.grey.size()) return frame.half;
  const cv::Point corner(std::max(-record.offsetX, 0), std::max(-record.offsetY, 0));
  return Halve(frame.grey(cv::Rect(corner, overlap.second.size())), scratch.halves[1]);
}

}  // namespace

bool FitsMosaic(JQStitchingAlgorithm& engine, Workspace& workspace, const cv::Mat& mosaic,
                const stitchflags& record, NewFrame& frame, FrameMeasures& measures) {
  engine.m_fBrightThreshold = engine.m_nUsePresets != 0 ? engine.m_fBrightPreset : 128.0f;
  engine.m_fDefinitionThreshold = engine.m_nUsePresets != 0 ? engine.m_fDefinitionPreset : 128.0f;
  const OverlapLimits limits{frame.picture.rows, frame.picture.cols, engine.m_fBrightThreshold,
                             engine.m_fDefinitionThreshold};
  // The offset of the previous call: the new frame is registered afterwards.
  const Overlap overlap = CutOverlap(cv::Point(record.positionX, record.positionY), record.offsetX,
                                     record.offsetY, mosaic, frame.picture);
  QualityScratch& scratch = workspace.quality;
  OverlapFit result;
  if (frame.shared && IsPlainPicture(mosaic)) {
    if (frame.grey == nullptr) frame.grey = &workspace.current.make(frame.picture, true);
    const cv::Mat mosaicHalf = ToHalf(overlap.first, scratch.rows, scratch.halves[0]);
    result = TestOverlap(record.offsetX, record.offsetY, limits, mosaicHalf,
                         HalfOfPart(*frame.grey, overlap, record, scratch), scratch);
  } else {
    result = TestParts(record.offsetX, record.offsetY, limits, overlap.first.clone(),
                       overlap.second.clone(), scratch);
  }
  measures.bright = result.bright;
  measures.brightLimit = limits.bright;
  measures.definition = result.definition;
  measures.definitionLimit = limits.definition;
  return result.fit;
}

bool FitsPrevious(JQStitchingAlgorithm& engine, Workspace& workspace, const cv::Mat& previous,
                  NewFrame& frame, FrameMeasures& measures) {
  engine.m_nFlagThreshold = engine.m_nUsePresets != 0 ? engine.m_nFlagPreset : 255;
  int motion = 0;
  if (frame.shared && frame.picture.type() == CV_8UC3 && previous.type() == CV_8UC3) {
    CheckMotionFrames(previous, frame.picture);
    if (frame.grey == nullptr) {
      const bool halved = CornerScale(engine.m_nDetectLevel) == 2;
      frame.grey = &workspace.current.make(frame.picture, halved);
    }
    motion =
        MotionDifference(ToGrey(previous, workspace.previous), frame.grey->grey, workspace.quality);
  } else {
    motion = engine.ImageMotionModel(previous, frame.picture);
  }
  measures.motion = static_cast<float>(motion);
  measures.motionLimit = static_cast<float>(engine.m_nFlagThreshold);
  return motion < engine.m_nFlagThreshold;
}

}  // namespace jqstitching
