#ifndef JQ_PICTURE_FILTER_ROUNDING_H
#define JQ_PICTURE_FILTER_ROUNDING_H

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
/// `cv::useOptimized`.
FilterRounding LibraryFilterRounding();

}  // namespace jqstitching

#endif  // JQ_PICTURE_FILTER_ROUNDING_H
