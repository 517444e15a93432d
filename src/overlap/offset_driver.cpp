#include "engine/detect_level.h"
#include "engine/picture_check.h"
#include "jqstitchingalgorithm.h"
#include "overlap/frame_tests.h"
#include "overlap/offset_step.h"
#include "overlap/start_mosaic.h"
#include "overlap/working_scale.h"
#include "registration/kernels/zero_samples.h"

jqstitching::FrameMeasures jqstitching::OffsetStep(JQStitchingAlgorithm& engine,
                                                   Workspace& workspace, const KnownOfFrames& known,
                                                   int frameIndex, cv::Mat refImage,
                                                   cv::Mat prevImage, cv::Mat curImage,
                                                   cv::Point& minPoint, cv::Point& maxPoint,
                                                   cv::Mat& mosaicImage, stitchflags& flags) {
  CheckDetectLevel(engine.m_nDetectLevel);
  CheckPictures(refImage, prevImage);
  CheckPicture(curImage);
  if (frameIndex != 0) CheckPicture(mosaicImage);
  const bool liftShared = known.unlifted && engine.m_nDetectLevel == 1 &&
                          refImage.type() == CV_8UC3 && CanRegisterShared(refImage, curImage);
  if (known.unlifted && !liftShared) LiftZeroSamples(curImage);
  ShrinkFrames(engine.m_nDetectLevel, refImage, prevImage, curImage);

  // What the caller holds is written last, so that a failure leaves it alone.
  stitchflags record = flags;
  cv::Point boxMin = minPoint, boxMax = maxPoint;
  cv::Mat mosaic = mosaicImage;
  if (frameIndex == 0) {
    const StartedMosaic started = StartMosaic(refImage);
    mosaic = started.mosaic;
    engine.m_nImageRows = refImage.rows;
    engine.m_nImageCols = refImage.cols;
    record.positionX = started.position.x;
    record.positionY = started.position.y;
    boxMin = started.position;
    boxMax = started.position + cv::Point(refImage.cols, refImage.rows);
  }

  NewFrame frame{curImage, CanRegisterShared(refImage, curImage), nullptr};
  if (liftShared) frame.grey = &workspace.current.makeLifted(curImage);
  FrameMeasures measures;
  const bool fit = engine.m_nOverlapMode == 0
                       ? FitsMosaic(engine, workspace, mosaic, record, frame, measures)
                       : FitsPrevious(engine, workspace, prevImage, frame, measures);
  record.overlapFlag = fit ? 1 : 0;

  if (frame.grey != nullptr) {
    measures.corners = RegisterShared(engine, workspace, refImage, known.referenceId, *frame.grey,
                                      record.offsetX, record.offsetY, record.matchCount);
  } else {
    measures.corners = Register(engine, workspace, refImage, curImage, record.offsetX,
                                record.offsetY, record.matchCount);
  }

  minPoint = boxMin;
  maxPoint = boxMax;
  mosaicImage = mosaic;
  flags = record;
  return measures;
}

void JQStitchingAlgorithm::StitchingImage_offset(int frameIndex, cv::Mat refImage,
                                                 cv::Mat prevImage, cv::Mat curImage,
                                                 cv::Point& minPoint, cv::Point& maxPoint,
                                                 cv::Mat& mosaicImage, stitchflags& flags) {
  OffsetStep(*this, m_workspace.get(), jqstitching::KnownOfFrames(), frameIndex, refImage,
             prevImage, curImage, minPoint, maxPoint, mosaicImage, flags);
}
