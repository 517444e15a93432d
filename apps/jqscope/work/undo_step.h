#ifndef JQSCOPE_WORK_UNDO_STEP_H
#define JQSCOPE_WORK_UNDO_STEP_H

#include <QPoint>
#include <QVector>
#include <opencv2/core.hpp>

namespace jqscope {

/// What a step back of a run returns to, beside what the stitcher keeps.
struct UndoStep {
  cv::Point origin;  ///< the first frame's corner in the mosaic
  cv::Point lastPlaced;
  QVector<QPoint> path;
  bool mosaicShown = false;
  int number = 0;  ///< in the journal
};

}  // namespace jqscope

#endif  // JQSCOPE_WORK_UNDO_STEP_H
