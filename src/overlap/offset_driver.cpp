#include <algorithm>
#include <opencv2/imgproc.hpp>

#include "engine/detect_level.h"
#include "jqstitchingalgorithm.h"
#include "overlap/kernels/motion.h"
#include "overlap/kernels/overlap_extraction.h"
#include "overlap/kernels/overlap_flag.h"
#include "overlap/offset_step.h"
#include "registration/kernels/zero_samples.h"
#include "registration/registration_step.h"

namespace {

using namespace jqstitching;

// Black, twice the frame in each direction, with the frame in its middle. An odd
// size puts the frame one pixel further right or down.
cv::Mat StartCanvas(const cv::Mat& frame, cv::Point& position) {
  const int rows = frame.rows, cols = frame.cols;
  position = cv::Point(cols - cols / 2, rows - rows / 2);
  cv::Mat canvas = cv::Mat::zeros(2 * rows, 2 * cols, frame.channels() == 1 ? CV_8UC1 : CV_8UC3);
  cv::Mat middle = canvas(cv::Rect(position, frame.size()));
  if (frame.type() != canvas.type()) {
    CV_Error(
        cv::Error::StsUnmatchedFormats,
        cv::format("a canvas takes 8-bit frames of 1 or 3 channels, not type %d", frame.type()));
  }
  frame.copyTo(middle);
  return canvas;
}

// The frame's part of the overlap, halved: the whole frame's half where the part
// is the whole frame.
cv::Mat HalfOfPart(const GreyAndHalf& frame, const Overlap& overlap, const stitchflags& record,
                   QualityScratch& scratch) {
  if (overlap.second.size() == frame.grey.size()) return frame.half;
  const cv::Point corner(std::max(-record.offsetX, 0), std::max(-record.offsetY, 0));
  return Halve(frame.grey(cv::Rect(corner, overlap.second.size())), scratch.halves[1]);
}

}  // namespace

void jqstitching::OffsetStep(JQStitchingAlgorithm& engine, Workspace& workspace,
                             const KnownOfFrames& known, int frameIndex, cv::Mat refImage,
                             cv::Mat prevImage, cv::Mat curImage, cv::Point& minPoint,
                             cv::Point& maxPoint, cv::Mat& mosaicImage, stitchflags& flags) {
  CheckDetectLevel(engine.m_nDetectLevel);
  const bool liftShared = known.unlifted && engine.m_nDetectLevel == 1 &&
                          refImage.type() == CV_8UC3 && CanRegisterShared(refImage, curImage);
  if (known.unlifted && !liftShared) LiftZeroSamples(curImage);
  if (engine.m_nDetectLevel != 1) {
    // The new frame's size is the target for all three.
    const cv::Size size(curImage.cols / engine.m_nDetectLevel,
                        curImage.rows / engine.m_nDetectLevel);
    for (cv::Mat* image : {&curImage, &prevImage, &refImage}) {
      cv::resize(*image, *image, size, 0, 0, cv::INTER_LINEAR);
    }
  }

  // What the caller holds is written last, so that a failure leaves it alone.
  stitchflags record = flags;
  cv::Point boxMin = minPoint, boxMax = maxPoint;
  cv::Mat mosaic = mosaicImage;

  if (frameIndex == 0) {
    cv::Point position;
    mosaic = StartCanvas(refImage, position);
    engine.m_nImageRows = refImage.rows;
    engine.m_nImageCols = refImage.cols;
    record.positionX = position.x;
    record.positionY = position.y;
    boxMin = position;
    boxMax = position + cv::Point(refImage.cols, refImage.rows);
  }

  const bool shared = CanRegisterShared(refImage, curImage);
  // Made once, where the registration can use it too.
  const GreyAndHalf* current = liftShared ? &workspace.current.makeLifted(curImage) : nullptr;

  if (engine.m_nOverlapMode == 0) {
    engine.m_fBrightThreshold = engine.m_nUsePresets != 0 ? engine.m_fBrightPreset : 128.0f;
    engine.m_fDefinitionThreshold = engine.m_nUsePresets != 0 ? engine.m_fDefinitionPreset : 128.0f;
    // The offset of the previous call: the new frame is registered afterwards.
    const Overlap overlap = CutOverlap(cv::Point(record.positionX, record.positionY),
                                       record.offsetX, record.offsetY, mosaic, curImage);
    if (shared && IsPlainPicture(mosaic)) {
      if (current == nullptr) current = &workspace.current.make(curImage);
      QualityScratch& scratch = workspace.quality;
      const cv::Mat mosaicHalf = ToHalf(overlap.first, scratch.rows, scratch.halves[0]);
      const OverlapLimits limits{curImage.rows, curImage.cols, engine.m_fBrightThreshold,
                                 engine.m_fDefinitionThreshold};
      record.overlapFlag = IsFit(record.offsetX, record.offsetY, limits, mosaicHalf,
                                 HalfOfPart(*current, overlap, record, scratch), scratch);
    } else {
      engine.CalacOverLapImageFlages(record.offsetX, record.offsetY, curImage.rows, curImage.cols,
                                     overlap.first.clone(), overlap.second.clone(),
                                     record.overlapFlag);
    }
  } else {
    engine.m_nFlagThreshold = engine.m_nUsePresets != 0 ? engine.m_nFlagPreset : 255;
    int motion = 0;
    if (shared && curImage.type() == CV_8UC3 && prevImage.type() == CV_8UC3) {
      CheckMotionFrames(prevImage, curImage);
      const bool halved = engine.m_nDetectLevel < 3;
      if (current == nullptr) {
        current =
            halved ? &workspace.current.make(curImage) : &workspace.current.makeGrey(curImage);
      }
      motion =
          MotionDifference(ToGrey(prevImage, workspace.previous), current->grey, workspace.quality);
    } else {
      motion = engine.ImageMotionModel(prevImage, curImage);
    }
    record.overlapFlag = motion < engine.m_nFlagThreshold;
  }

  if (current != nullptr) {
    RegisterShared(engine, workspace, refImage, known.referenceId, *current, record.offsetX,
                   record.offsetY, record.matchCount);
  } else {
    engine.ImageMosaicFun(refImage, curImage, record.offsetX, record.offsetY, record.matchCount);
  }

  minPoint = boxMin;
  maxPoint = boxMax;
  mosaicImage = mosaic;
  flags = record;
}

void JQStitchingAlgorithm::StitchingImage_offset(int frameIndex, cv::Mat refImage,
                                                 cv::Mat prevImage, cv::Mat curImage,
                                                 cv::Point& minPoint, cv::Point& maxPoint,
                                                 cv::Mat& mosaicImage, stitchflags& flags) {
  OffsetStep(*this, m_workspace.get(), KnownOfFrames(), frameIndex, refImage, prevImage, curImage,
             minPoint, maxPoint, mosaicImage, flags);
}
