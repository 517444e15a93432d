#ifndef JQ_REGISTRATION_KERNELS_FEATURES_H
#define JQ_REGISTRATION_KERNELS_FEATURES_H

#include <cstdint>
#include <opencv2/core.hpp>
#include <optional>
#include <vector>

#include "picture/grey.h"
#include "registration/kernels/corners.h"
#include "registration/kernels/distances.h"

namespace jqstitching {

/// The tuning values that corners depend on.
struct CornerSettings {
  std::int32_t detectLevel = 0;
  std::int32_t cornerBudget = 0;
  bool operator==(const CornerSettings& other) const {
    return detectLevel == other.detectLevel && cornerBudget == other.cornerBudget;
  }
  bool halved() const { return CornerScale(detectLevel) == 2; }
};

/// Corners of a picture in its own pixels, and their descriptors.
struct Features {
  std::vector<cv::Point> corners;
  PairedDescriptors descriptors;
};

/// `picture.half` is read where `settings.halved()` alone.
Features FindFeatures(const GreyAndHalf& picture, const CornerSettings& settings,
                      CornerScratch& scratch);

/// The reference picture's features, found once for as long as its grey pixels
/// and the settings stay the same.
class ReferenceFeatures {
 public:
  /// Every call compares all grey pixels with the remembered ones, so that a
  /// reference changed in place is never mistaken. Only a caller who holds the
  /// picture alone gives it an `id` that no other picture has had; the same id
  /// counts as the same picture, and 0 asks for the comparison.
  void update(const cv::Mat& picture, std::uint64_t id, const CornerSettings& settings,
              CornerScratch& scratch);
  const Features& features() const { return m_features; }

 private:
  bool isCurrent(const cv::Mat& picture, std::uint64_t id, const CornerSettings& settings);

  bool m_valid = false;
  bool m_optimized = false;  // `cv::useOptimized` decides how the image library rounds
  CornerSettings m_settings;
  std::uint64_t m_id = 0;
  ScratchPicture m_greyMemory, m_halfMemory, m_row;
  cv::Mat m_grey;
  Features m_features;
};

/// The shift that carries a point of the second picture onto the first.
struct Shift {
  int x = 0, y = 0;
  int support = 0;  ///< matches that agree; 0 without any match
  int pairs = 0;    ///< matches among which they were counted
};

/// Nothing when either picture has no corners.
std::optional<Shift> MeasureShift(const Features& first, const Features& second);

}  // namespace jqstitching

#endif  // JQ_REGISTRATION_KERNELS_FEATURES_H
