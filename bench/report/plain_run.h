#ifndef JQ_BENCH_REPORT_PLAIN_RUN_H
#define JQ_BENCH_REPORT_PLAIN_RUN_H

#include <opencv2/core.hpp>

#include "jqglobalclass.h"
#include "reference/algorithm.h"

namespace jqbench {

/// A live run on the plain twin of the engine.
class PlainRun {
 public:
  void Stitching(_tagJQIMG* img, int overlapMode, int detectLevel, int cornerBudget);
  const stitchflags& flags() const { return m_engine.m_stitchFlags; }
  const cv::Mat& mosaic() const { return m_mosaic; }
  cv::Point contentMin() const { return m_min; }
  cv::Point contentMax() const { return m_max; }
  bool lastPlaced() const { return m_lastPlaced; }

 private:
  reference::Algorithm m_engine;
  cv::Mat m_reference, m_current, m_mosaic;
  cv::Point m_min, m_max;
  int m_frames = 0;
  bool m_lastPlaced = false;
};

}  // namespace jqbench

#endif  // JQ_BENCH_REPORT_PLAIN_RUN_H
