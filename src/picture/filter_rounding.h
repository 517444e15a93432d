#ifndef JQ_PICTURE_FILTER_ROUNDING_H
#define JQ_PICTURE_FILTER_ROUNDING_H

#include <optional>

namespace jqstitching {

/// How `cv::filter2D` adds up its taps in this process. It takes them in order,
/// in single precision; whether a product is rounded before it is added depends on
/// the CPU and on `cv::setUseOptimized`. Our own passes follow what is found, and
/// where that cannot be told they leave the work to `cv::filter2D`.
enum class FilterRounding {
  kFused,     ///< one rounding per tap (fused multiply-add)
  kSeparate,  ///< two roundings per tap
  kUnknown
};

/// Found out by filtering small pictures, once for each setting of
/// `cv::useOptimized`; unknown, for this call only, when another thread changes the
/// setting meanwhile.
FilterRounding LibraryFilterRounding();

/// Whether our own passes must fuse to follow it; nothing when it is not known or
/// the vector level in use cannot.
std::optional<bool> FollowableRounding();

}  // namespace jqstitching

#endif  // JQ_PICTURE_FILTER_ROUNDING_H
