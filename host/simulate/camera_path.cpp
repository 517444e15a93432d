#include "host/simulate/camera_path.h"

#include <algorithm>
#include <numeric>

#include "host/simulate/random_stream.h"

namespace jqhost {
namespace {

// The eight directions, clockwise from the right.
const cv::Point kCompass[8] = {{1, 0},  {1, 1},   {0, 1},  {-1, 1},
                               {-1, 0}, {-1, -1}, {0, -1}, {1, -1}};

// Smallest number of columns whose square holds the frames.
int SquareColumns(int count) {
  int columns = 1;
  while (columns * columns < count) ++columns;
  return columns;
}

void Row(const PathOptions& o, std::vector<cv::Point>& path) {
  for (int i = 1; i < o.count; ++i) {
    path.emplace_back(i * o.direction.x * o.step.x, i * o.direction.y * o.step.y);
  }
}

void Serpentine(const PathOptions& o, std::vector<cv::Point>& path) {
  const int columns = o.columns > 0 ? o.columns : SquareColumns(o.count);
  for (int i = 1; i < o.count; ++i) {
    const int line = i / columns;
    const int place = i % columns;
    path.emplace_back((line % 2 == 0 ? place : columns - 1 - place) * o.step.x, line * o.step.y);
  }
}

void Spiral(const PathOptions& o, std::vector<cv::Point>& path) {
  // Arms of 1, 1, 2, 2, 3, 3, ... steps; every arm turns right.
  int arm = 0;
  int left = 1;
  for (int i = 1; i < o.count; ++i) {
    const cv::Point turn = kCompass[arm % 4 * 2];
    path.emplace_back(path.back().x + turn.x * o.step.x, path.back().y + turn.y * o.step.y);
    if (--left == 0) {
      ++arm;
      left = arm / 2 + 1;
    }
  }
}

void RandomWalk(const PathOptions& o, std::vector<cv::Point>& path) {
  RandomStream stream(o.seed, kStreamWalk, 0);
  int heading = stream.Between(0, 7);
  for (int i = 1; i < o.count; ++i) {
    heading = (heading + stream.Between(-2, 2) + 8) % 8;
    const int length = stream.Between(75, 125);
    const cv::Point turn = kCompass[heading];
    path.emplace_back(path.back().x + turn.x * (o.step.x * length / 100),
                      path.back().y + turn.y * (o.step.y * length / 100));
  }
}

void Jump(const PathOptions& o, std::vector<cv::Point>& path) {
  RandomStream stream(o.seed, kStreamJump, 0);
  std::vector<int> places(std::max(o.count - 2, 0));
  std::iota(places.begin(), places.end(), 1);
  for (int i = 0; i < o.jumps; ++i) {
    std::swap(places[i], places[stream.Between(i, static_cast<int>(places.size()) - 1)]);
    const cv::Point turn = kCompass[stream.Between(0, 3) * 2];
    path[places[i]].x += turn.x * (o.frame.width * 13 / 10);
    path[places[i]].y += turn.y * (o.frame.height * 13 / 10);
  }
}

}  // namespace

std::vector<cv::Point> CameraPath(const PathOptions& options) {
  std::vector<cv::Point> path{{0, 0}};
  switch (options.kind) {
    case PathKind::kRow:
      Row(options, path);
      break;
    case PathKind::kSerpentine:
      Serpentine(options, path);
      break;
    case PathKind::kSpiral:
      Spiral(options, path);
      break;
    case PathKind::kRandomWalk:
      RandomWalk(options, path);
      break;
  }
  Jump(options, path);
  return path;
}

cv::Rect PathBounds(const std::vector<cv::Point>& path, cv::Size frame) {
  cv::Rect bounds;
  for (const cv::Point& corner : path) bounds |= cv::Rect(corner, frame);
  return bounds;
}

void MovePathInside(std::vector<cv::Point>& path, cv::Size frame, cv::Size scene) {
  const cv::Rect bounds = PathBounds(path, frame);
  const cv::Point shift((scene.width - bounds.width) / 2 - bounds.x,
                        (scene.height - bounds.height) / 2 - bounds.y);
  for (cv::Point& corner : path) corner += shift;
}

}  // namespace jqhost
