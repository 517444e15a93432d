#ifndef JQ_BENCH_SUPPORT_OLD_BLOCK_H
#define JQ_BENCH_SUPPORT_OLD_BLOCK_H

#include <opencv2/core.hpp>

namespace jqbench {

/// What the mosaic holds where a frame is about to be placed: `frame`, with the
/// right fifth and the lower tenth still empty.
inline cv::Mat OldBlock(const cv::Mat& frame) {
  cv::Mat block = frame.clone();
  block.colRange(frame.cols * 4 / 5, frame.cols).setTo(cv::Scalar::all(0));
  block.rowRange(frame.rows * 9 / 10, frame.rows).setTo(cv::Scalar::all(0));
  return block;
}

}  // namespace jqbench

#endif  // JQ_BENCH_SUPPORT_OLD_BLOCK_H
