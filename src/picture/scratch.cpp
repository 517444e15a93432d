#include "picture/scratch.h"

namespace jqstitching {

cv::Mat ScratchPicture::shape(int rows, int cols, int type) {
  const size_t bytes = static_cast<size_t>(rows) * cols * CV_ELEM_SIZE(type);
  if (bytes == 0) return cv::Mat(rows, cols, type);
  if (m_memory.total() < bytes) {
    constexpr size_t kLine = 4096;
    m_memory.release();  // first, so that old and new do not stand side by side
    // By a fresh matrix: `create` that fails leaves a header with a size and no data.
    m_memory =
        cv::Mat(static_cast<int>((bytes + kLine - 1) / kLine), static_cast<int>(kLine), CV_8U);
  }
  return cv::Mat(rows, cols, type, m_memory.data);
}

}  // namespace jqstitching
