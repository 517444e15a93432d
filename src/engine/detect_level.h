#ifndef JQ_ENGINE_DETECT_LEVEL_H
#define JQ_ENGINE_DETECT_LEVEL_H

#include <cstdint>

namespace jqstitching {

/// The detection level divides frame sizes: raises `cv::Exception` below 1.
void CheckDetectLevel(std::int32_t detectLevel);

}  // namespace jqstitching

#endif  // JQ_ENGINE_DETECT_LEVEL_H
