#include "registration/kernels/features.h"

#include "registration/kernels/consensus.h"
#include "registration/kernels/descriptor.h"
#include "registration/kernels/matching.h"

namespace jqstitching {

Features FindFeatures(const GreyAndHalf& picture, const CornerSettings& settings,
                      CornerScratch& scratch) {
  const bool halved = settings.halved();
  CornerList found = FindCorners(halved ? picture.half : picture.grey, settings.detectLevel,
                                 settings.cornerBudget, scratch);
  if (halved && !found.unordered) {
    for (cv::Point& corner : found.positions) corner *= 2;
  }
  Features features;
  features.corners = std::move(found.positions);
  features.descriptors = PairedDescriptors(DescribeCorners(picture.grey, features.corners));
  return features;
}

bool ReferenceFeatures::isCurrent(const cv::Mat& picture, std::uint64_t id,
                                  const CornerSettings& settings) {
  if (!m_valid || !(m_settings == settings) || m_optimized != cv::useOptimized()) return false;
  // At levels above 1 the size of a reference follows the new frame's.
  if (id != 0 && id == m_id && picture.size() == m_grey.size()) return true;
  return IsGreyOf(picture, m_grey, m_row);
}

void ReferenceFeatures::update(const cv::Mat& picture, std::uint64_t id,
                               const CornerSettings& settings, CornerScratch& scratch) {
  if (isCurrent(picture, id, settings)) {
    m_id = id;
    return;
  }
  m_valid = false;
  GreyAndHalf grey;
  if (settings.halved()) {
    grey = ToGreyAndHalf(picture, m_greyMemory, m_halfMemory);
  } else {
    grey.grey = ToGrey(picture, m_greyMemory);
  }
  m_features = FindFeatures(grey, settings, scratch);
  m_grey = grey.grey;
  m_settings = settings;
  m_optimized = cv::useOptimized();
  m_id = id;
  m_valid = true;
}

std::optional<Shift> MeasureShift(const Features& first, const Features& second) {
  if (first.corners.empty() || second.corners.empty()) return std::nullopt;
  std::vector<cv::Point> matchedFirst, matchedSecond;
  for (const cv::Point& pair : MatchDescriptors(first.descriptors, second.descriptors)) {
    matchedFirst.push_back(first.corners[static_cast<size_t>(pair.y)]);
    matchedSecond.push_back(second.corners[static_cast<size_t>(pair.x)]);
  }
  Shift shift;
  shift.pairs = static_cast<int>(matchedFirst.size());
  const Consensus best = FindConsensus(matchedFirst, matchedSecond);
  if (best.support.empty()) return shift;
  const auto winner = static_cast<size_t>(best.hypothesis);
  shift.x = matchedFirst[winner].x - matchedSecond[winner].x;
  shift.y = matchedFirst[winner].y - matchedSecond[winner].y;
  shift.support = static_cast<int>(best.support.size());
  return shift;
}

}  // namespace jqstitching
