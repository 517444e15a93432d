#include "host/source/guarded_decode.h"

#include <new>

namespace jqhost {

cv::Mat GuardedDecode(const std::function<cv::Mat()>& decoder, const char* damaged,
                      std::string& why) {
  try {
    cv::Mat picture = decoder();
    if (picture.empty()) why = damaged;
    return picture;
  } catch (const cv::Exception& raised) {
    why = "it cannot be decoded (" + raised.err + ")";
  } catch (const std::bad_alloc&) {
    why = "there is not enough memory for it";
  }
  return cv::Mat();
}

}  // namespace jqhost
