#ifndef JQHOST_RUN_RUN_PICTURE_H
#define JQHOST_RUN_RUN_PICTURE_H

#include "host/output/picture.h"
#include "host/record/run_record.h"
#include "host/verdict/frame_judge.h"

class JQImageStitching;

namespace jqhost {

/// The picture, or the first frame where there is no mosaic yet: the mosaic is
/// made when the second frame comes.
Picture OrFirstFrame(Picture picture, const FrameJudge& judge);

/// Writes the sizes of a frame and the first frame's corner in the picture.
void DescribeGeometry(const JQImageStitching& stitcher, const FrameJudge& judge,
                      const Picture& picture, RunRecord& record);

}  // namespace jqhost

#endif  // JQHOST_RUN_RUN_PICTURE_H
