#include "host/assemble/paint_island.h"

#include <algorithm>
#include <future>
#include <numeric>
#include <system_error>

#include "jqstitchingalgorithm.h"

namespace jqhost {
namespace {

bool IsAbove(cv::Point a, cv::Point b) {
  return a.y != b.y ? a.y < b.y : a.x < b.x;
}

// The engine lets a mosaic grow that a frame touches; a margin keeps the edges apart.
constexpr int kCanvasMargin = 1;

void Paint(JQStitchingAlgorithm& engine, const cv::Mat& frame, cv::Point corner, cv::Mat& canvas) {
  stitchflags flags;
  flags.positionX = corner.x;
  flags.positionY = corner.y;
  const cv::Point boxEnd(canvas.size());
  cv::Point boxMin, boxMax, position;
  cv::Mat fused;
  engine.StitchingImage_imageblend(canvas, frame, flags, cv::Point(), boxEnd, corner, boxMin,
                                   boxMax, position, canvas, fused);
}

std::future<cv::Mat> Begin(const std::function<cv::Mat(std::size_t)>& read, std::size_t frame) {
  try {
    return std::async(std::launch::async, read, frame);
  } catch (const std::system_error&) {
    return std::async(std::launch::deferred, read, frame);
  }
}

}  // namespace

std::vector<std::size_t> PaintingOrder(const std::vector<cv::Point>& corners, cv::Size frame) {
  std::vector<std::size_t> byRow(corners.size());
  std::iota(byRow.begin(), byRow.end(), 0);
  std::stable_sort(byRow.begin(), byRow.end(), [&corners](std::size_t a, std::size_t b) {
    return IsAbove(corners[a], corners[b]);
  });
  std::vector<bool> taken(corners.size(), false);
  std::vector<std::size_t> order;
  const auto touch = [&](std::size_t a, std::size_t b) {
    return !(cv::Rect(corners[a], frame) & cv::Rect(corners[b], frame)).empty();
  };
  for (const std::size_t start : byRow) {
    if (taken[start]) continue;
    taken[start] = true;
    order.push_back(start);
    for (std::size_t next = order.size() - 1; next < order.size(); ++next) {
      for (const std::size_t other : byRow) {
        if (taken[other] || !touch(order[next], other)) continue;
        taken[other] = true;
        order.push_back(other);
      }
    }
  }
  return order;
}

cv::Mat PaintIsland(const std::vector<cv::Point>& corners, cv::Size frame, int detectLevel,
                    const std::function<cv::Mat(std::size_t)>& read,
                    const std::function<bool(std::size_t)>& goOn) {
  cv::Rect bounds;
  for (const cv::Point& corner : corners) bounds |= cv::Rect(corner, frame);
  const cv::Point margin(kCanvasMargin, kCanvasMargin);
  cv::Mat canvas =
      cv::Mat::zeros(bounds.height + 2 * kCanvasMargin, bounds.width + 2 * kCanvasMargin, CV_8UC3);
  JQStitchingAlgorithm engine;
  engine.SetParameter(detectLevel, 8, 0, 0);
  const std::vector<std::size_t> order = PaintingOrder(corners, frame);
  std::future<cv::Mat> next;
  for (std::size_t i = 0; i < order.size(); ++i) {
    if (!goOn(i)) break;
    const cv::Mat picture = next.valid() ? next.get() : read(order[i]);
    if (i + 1 < order.size()) next = Begin(read, order[i + 1]);
    if (!picture.empty()) Paint(engine, picture, corners[order[i]] - bounds.tl() + margin, canvas);
  }
  if (next.valid()) next.wait();
  return canvas(cv::Rect(margin, bounds.size()));
}

}  // namespace jqhost
