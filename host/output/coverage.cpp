#include "host/output/coverage.h"

#include <utility>

#include "host/record/run_record.h"

namespace jqhost {
namespace {

std::vector<cv::Rect> PlacesOf(const RunRecord& record) {
  std::vector<cv::Rect> places;
  for (const FrameResult& frame : record.frames) {
    if (!frame.Placed()) continue;
    places.emplace_back(CornerInPicture(record, frame), record.workingSize);
  }
  return places;
}

}  // namespace

CoveragePixels::CoveragePixels(cv::Size picture, std::vector<cv::Rect> places)
    : m_size(picture), m_places(std::move(places)) {}

CoveragePixels::CoveragePixels(const RunRecord& record)
    : CoveragePixels(record.pictureSize, PlacesOf(record)) {}

void CoveragePixels::Read(const cv::Rect& area, cv::Mat& pixels) const {
  pixels.setTo(0);
  for (const cv::Rect& place : m_places) {
    const cv::Rect common = area & place;
    if (!common.empty()) pixels(common - area.tl()).setTo(255);
  }
}

}  // namespace jqhost
