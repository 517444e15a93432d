#include "host/run/run_picture.h"

#include "jqimagestitching.h"

namespace jqhost {

Picture OrFirstFrame(Picture picture, const FrameJudge& judge) {
  if (picture.image.empty()) {
    picture.image = judge.FirstFrame();
    picture.trimmedBy = "placed frames";
    picture.isFirstFrame = true;
  }
  return picture;
}

void DescribeGeometry(const JQImageStitching& stitcher, const FrameJudge& judge,
                      const Picture& picture, RunRecord& record) {
  const bool hasMosaic = !stitcher.GetMosaic().empty();
  record.frameSize = judge.FrameSize();
  record.workingSize = hasMosaic ? judge.WorkingSize() : judge.FrameSize();
  record.firstCorner = hasMosaic ? judge.Origin() - picture.origin : cv::Point(0, 0);
}

}  // namespace jqhost
