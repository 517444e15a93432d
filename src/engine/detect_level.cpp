#include "engine/detect_level.h"

#include <opencv2/core.hpp>

namespace jqstitching {

void CheckDetectLevel(std::int32_t detectLevel) {
  if (detectLevel < 1) {
    CV_Error(
        cv::Error::StsOutOfRange,
        cv::format("m_nDetectLevel is %d; the frame size is divided by it, so it must be 1 or more",
                   detectLevel));
  }
}

}  // namespace jqstitching
