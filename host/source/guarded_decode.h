#ifndef JQHOST_SOURCE_GUARDED_DECODE_H
#define JQHOST_SOURCE_GUARDED_DECODE_H

#include <functional>
#include <opencv2/core.hpp>
#include <string>

namespace jqhost {

/// What `decoder`, a call of the image library, gives. Where it raises, runs out of
/// memory or gives nothing: an empty matrix, and the cause in `why`, which is `damaged`
/// in the last case.
cv::Mat GuardedDecode(const std::function<cv::Mat()>& decoder, const char* damaged,
                      std::string& why);

}  // namespace jqhost

#endif  // JQHOST_SOURCE_GUARDED_DECODE_H
