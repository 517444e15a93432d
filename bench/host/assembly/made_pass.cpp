#include "host/assembly/made_pass.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <stdexcept>

#include "host/simulate/random_stream.h"

namespace jqbench {
namespace {

constexpr int kMargin = 32;           // of scene around the frames, for the defocus
constexpr double kBadDefocus = 12;    // pixels
constexpr int kLightCompression = 1;  // of PNG: quick to write

struct Grid {
  cv::Size step;
  int jitterX = 0, jitterY = 0;
  int columns = 0, rows = 0;

  cv::Size Bounds(cv::Size frame) const {
    return {(columns - 1) * step.width + frame.width + 2 * (jitterX + kMargin),
            (rows - 1) * step.height + frame.height + 2 * (jitterY + kMargin)};
  }
};

Grid PlanGrid(const PassSettings& s) {
  Grid grid;
  const auto share = [](int length, double part) { return cvRound(length * part); };
  grid.step = cv::Size(share(s.frame.width, 1 - s.overlap), share(s.frame.height, 1 - s.overlap));
  grid.jitterX = share(s.frame.width, s.jitter);
  grid.jitterY = share(s.frame.height, s.jitter);
  grid.columns = s.columns > 0
                     ? s.columns
                     : static_cast<int>(std::ceil(std::sqrt(static_cast<double>(s.count))));
  grid.rows = (s.count + grid.columns - 1) / grid.columns;
  return grid;
}

// The grid with as many columns and rows as the picture holds.
void FitGrid(cv::Size picture, cv::Size frame, int count, Grid& grid) {
  const auto fitting = [](int room, int step) { return room < 0 ? 0 : room / step + 1; };
  const int columns =
      fitting(picture.width - 2 * (grid.jitterX + kMargin) - frame.width, grid.step.width);
  const int rows =
      fitting(picture.height - 2 * (grid.jitterY + kMargin) - frame.height, grid.step.height);
  if (columns == 0 || rows == 0) throw std::runtime_error("the picture is smaller than a frame");
  grid.columns = std::min(columns, std::max(grid.columns, (count + rows - 1) / rows));
  grid.rows = std::min(rows, (count + grid.columns - 1) / grid.columns);
}

// Line by line, there and back.
std::vector<cv::Point> Corners(const Grid& grid, int count, jqhost::RandomStream& random) {
  std::vector<cv::Point> corners;
  for (int i = 0; i < count; ++i) {
    const int row = i / grid.columns;
    const int along = i % grid.columns;
    const int column = row % 2 == 0 ? along : grid.columns - 1 - along;
    corners.emplace_back(kMargin + grid.jitterX + column * grid.step.width +
                             random.Between(-grid.jitterX, grid.jitterX),
                         kMargin + grid.jitterY + row * grid.step.height +
                             random.Between(-grid.jitterY, grid.jitterY));
  }
  return corners;
}

template <typename Item>
void Shuffle(std::vector<Item>& items, jqhost::RandomStream& random) {
  for (int i = static_cast<int>(items.size()) - 1; i > 0; --i) {
    std::swap(items[static_cast<std::size_t>(i)],
              items[static_cast<std::size_t>(random.Between(0, i))]);
  }
}

// The kinds by turns, spread over the pass by chance.
void Spoil(std::vector<MadeFrame>& frames, const PaintScene& other, const PassSettings& s,
           jqhost::RandomStream& random) {
  if (s.badShare <= 0) return;
  const int bad = std::max(1, cvRound(s.badShare * static_cast<double>(frames.size())));
  std::vector<std::size_t> order(frames.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  Shuffle(order, random);
  constexpr FrameKind kKinds[] = {FrameKind::kForeign, FrameKind::kBlack, FrameKind::kDefocused};
  int turn = random.Between(0, 2);
  for (int i = 0; i < bad; ++i, ++turn) {
    MadeFrame& frame = frames[order[static_cast<std::size_t>(i)]];
    frame.kind = kKinds[turn % 3];
    if (frame.kind == FrameKind::kBlack) frame.picture.setTo(cv::Scalar::all(0));
    if (frame.kind == FrameKind::kDefocused)
      cv::GaussianBlur(frame.picture, frame.picture, cv::Size(), kBadDefocus);
    if (frame.kind == FrameKind::kForeign)
      frame.picture = other(s.frame, s.seed + 1000 + static_cast<std::uint64_t>(i));
  }
}

std::vector<MadeFrame> TakeFrames(const cv::Mat& scene, const Grid& grid, const PaintScene& other,
                                  const PassSettings& s) {
  jqhost::RandomStream random(s.seed);
  const int count = std::min(s.count, grid.columns * grid.rows);
  const std::vector<cv::Point> corners = Corners(grid, count, random);
  std::vector<MadeFrame> frames;
  for (int i = 0; i < count; ++i) {
    const cv::Point corner = corners[static_cast<std::size_t>(i)];
    jqhost::CameraEffects effects = s.effects;
    effects.blur *= random.Unit();
    frames.push_back({jqhost::TakeFrame(scene, corner, s.frame, i, effects, s.seed),
                      FrameKind::kGood, corner, i + 1});
  }
  Spoil(frames, other, s, random);
  if (s.shuffled) Shuffle(frames, random);
  return frames;
}

}  // namespace

const char* FrameKindName(FrameKind kind) {
  switch (kind) {
    case FrameKind::kGood:
      return "good";
    case FrameKind::kBlack:
      return "black";
    case FrameKind::kDefocused:
      return "defocused";
    case FrameKind::kForeign:
      return "foreign";
  }
  return "";
}

std::vector<MadeFrame> MakePass(const PaintScene& scene, const PaintScene& other,
                                const PassSettings& settings) {
  const Grid grid = PlanGrid(settings);
  return TakeFrames(scene(grid.Bounds(settings.frame), settings.seed), grid, other, settings);
}

std::vector<MadeFrame> MakePass(const cv::Mat& picture, const PaintScene& other,
                                const PassSettings& settings) {
  Grid grid = PlanGrid(settings);
  FitGrid(picture.size(), settings.frame, settings.count, grid);
  return TakeFrames(picture, grid, other, settings);
}

void WritePass(const std::vector<MadeFrame>& frames, const std::string& folder) {
  std::ofstream table(folder + "/frames.csv");
  table << "file,kind,x,y,taken\n";
  for (std::size_t i = 0; i < frames.size(); ++i) {
    const std::string name = cv::format("frame_%04d.png", static_cast<int>(i) + 1);
    if (!cv::imwrite(folder + "/" + name, frames[i].picture,
                     {cv::IMWRITE_PNG_COMPRESSION, kLightCompression})) {
      throw std::runtime_error("cannot write " + folder + "/" + name);
    }
    table << name << ',' << FrameKindName(frames[i].kind) << ',' << frames[i].corner.x << ','
          << frames[i].corner.y << ',' << frames[i].taken << '\n';
  }
  if (!table.flush()) throw std::runtime_error("cannot write " + folder + "/frames.csv");
}

}  // namespace jqbench
