#include "work/lost_search.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <opencv2/imgproc.hpp>
#include <utility>

#include "host/source/image_record.h"

namespace jqscope {
namespace {

// A frame is looked for when so many in a row were lost: a single blurred one comes back
// by itself.
constexpr int kLostEnough = 4;
// Places compared with one frame, and the least distance between two of them as a share
// of the frame.
constexpr int kPlacesAtOnce = 6;
constexpr double kPlacesApart = 0.3;

// So many of the places by their distance from where the camera probably is.
std::vector<KnownPlace> NearestPlaces(const LostSearch::Ground& ground, int from, int count) {
  if (ground.mosaic.empty()) return {};
  std::vector<cv::Point> places;
  for (const QPoint& corner : ground.path) {
    const cv::Point place(corner.x(), corner.y());
    const bool isNew = std::none_of(places.begin(), places.end(), [&](const cv::Point& other) {
      return std::abs(place.x - other.x) < kPlacesApart * ground.size.width &&
             std::abs(place.y - other.y) < kPlacesApart * ground.size.height;
    });
    if (isNew) places.push_back(place);
  }
  const auto distance = [&ground](const cv::Point& place) {
    return std::hypot(place.x - ground.around.x, place.y - ground.around.y);
  };
  std::sort(places.begin(), places.end(),
            [&](const cv::Point& a, const cv::Point& b) { return distance(a) < distance(b); });
  std::vector<KnownPlace> known;
  for (int i = from; i < std::min(from + count, static_cast<int>(places.size())); ++i) {
    const cv::Point place = places[static_cast<std::size_t>(i)];
    known.push_back({place, ground.mosaic(cv::Rect(place + ground.origin, ground.size)).clone()});
  }
  return known;
}

}  // namespace

void LostSearch::Follow(bool lost) {
  m_lostFrames = lost ? m_lostFrames + 1 : 0;
  if (!lost) m_compared = 0;
}

void LostSearch::Look(const cv::Mat& image, const Ground& ground, const Begin& begin) {
  if (m_lostFrames < kLostEnough) return;
  std::vector<KnownPlace> places = NearestPlaces(ground, m_compared, kPlacesAtOnce);
  if (places.empty() && m_compared > 0) {
    m_compared = 0;
    places = NearestPlaces(ground, 0, kPlacesAtOnce);
  }
  if (places.empty()) return;
  cv::Mat frame = jqhost::AsTakenIn(image);
  if (frame.size() != ground.size) cv::resize(frame, frame, ground.size);
  const int compared = static_cast<int>(places.size());
  if (begin(frame.clone(), std::move(places))) m_compared += compared;
}

}  // namespace jqscope
