#include "host/simulate/slide.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "host/simulate/random_stream.h"
#include "host/simulate/soft_paint.h"

namespace jqhost {
namespace {

// Cells and fibres sit on coarse grids, one per square, moved about inside it:
// evenly spread without a search, and each drawn from its own stream.
constexpr int kCellGrid = 44;
constexpr int kFibreGrid = 110;
constexpr int kFibreReach = 420;  // no fibre is longer, so squares further off cannot show

std::uint64_t ItemOf(int gridX, int gridY) {
  return (static_cast<std::uint64_t>(static_cast<std::uint32_t>(gridY)) << 32) |
         static_cast<std::uint32_t>(gridX);
}

// --- ground -------------------------------------------------------------------

// Lattice values of one octave of value noise along one lattice row.
std::vector<int> LatticeRow(std::uint64_t seed, int octave, int row, int count) {
  std::vector<int> values(count);
  for (int i = 0; i < count; ++i) {
    RandomStream stream(seed, kStreamTexture + 256U * static_cast<unsigned>(octave),
                        ItemOf(i, row));
    values[i] = stream.Between(0, 255);
  }
  return values;
}

// Smoothstep of t of 256, in 256 parts.
int Smooth(int t) {
  return (t * t * (768 - 2 * t)) >> 16;
}

// The ground is painted in strips, so that a large slide needs no field of its size.
// Every step of an octave divides their height.
constexpr int kStrip = 256;

// Adds one octave with cells of `step` pixels (a power of two), times weight / 256, to
// the strip that starts at row `top` of the slide.
void AddOctave(cv::Mat& field, int top, std::uint64_t seed, int octave, int step, int weight) {
  const int count = field.cols / step + 2;
  std::vector<int> above = LatticeRow(seed, octave, top / step, count);
  std::vector<int> below = LatticeRow(seed, octave, top / step + 1, count);
  std::vector<int> mixed(count);
  for (int r = 0; r < field.rows; ++r) {
    if (r > 0 && r % step == 0) {
      above.swap(below);
      below = LatticeRow(seed, octave, (top + r) / step + 1, count);
    }
    const int ty = Smooth(r % step * 256 / step);
    for (int i = 0; i < count; ++i) mixed[i] = above[i] * (256 - ty) + below[i] * ty;
    std::uint16_t* row = field.ptr<std::uint16_t>(r);
    for (int c = 0; c < field.cols; ++c) {
      const int tx = Smooth(c % step * 256 / step);
      const int value = (mixed[c / step] * (256 - tx) + mixed[c / step + 1] * tx) >> 16;
      row[c] = static_cast<std::uint16_t>(row[c] + value * weight);
    }
  }
}

void PaintGroundStrip(cv::Mat& strip, int top, std::uint64_t seed) {
  cv::Mat field(strip.size(), CV_16U, cv::Scalar(0));
  AddOctave(field, top, seed, 0, 256, 110);
  AddOctave(field, top, seed, 1, 64, 60);
  AddOctave(field, top, seed, 2, 16, 50);
  AddOctave(field, top, seed, 3, 4, 36);
  const int pale[3] = {238, 232, 242};
  const int stained[3] = {196, 148, 222};
  for (int r = 0; r < strip.rows; ++r) {
    const std::uint16_t* density = field.ptr<std::uint16_t>(r);
    cv::Vec3b* row = strip.ptr<cv::Vec3b>(r);
    for (int c = 0; c < strip.cols; ++c) {
      for (int k = 0; k < 3; ++k) {
        row[c][k] = static_cast<unsigned char>(
            (pale[k] * (65535 - density[c]) + stained[k] * density[c]) >> 16);
      }
    }
  }
}

void PaintGround(cv::Mat& slide, std::uint64_t seed) {
  for (int top = 0; top < slide.rows; top += kStrip) {
    cv::Mat strip = slide.rowRange(top, std::min(top + kStrip, slide.rows));
    PaintGroundStrip(strip, top, seed);
  }
}

// --- fibres -------------------------------------------------------------------

cv::Vec3b Shade(RandomStream& stream, int blue, int green, int red, int spread) {
  const int change = stream.Between(-spread, spread);
  const auto sample = [&](int base) {
    return static_cast<unsigned char>(std::clamp(base + change + stream.Between(-6, 6), 16, 255));
  };
  const unsigned char b = sample(blue);
  const unsigned char g = sample(green);
  return {b, g, sample(red)};
}

void PaintFibre(cv::Mat& slide, std::uint64_t seed, int gridX, int gridY) {
  RandomStream stream(seed, kStreamFibre, ItemOf(gridX, gridY));
  Stroke stroke;
  stroke.x1 = gridX * kFibreGrid + stream.Between(0, kFibreGrid - 1);
  stroke.y1 = gridY * kFibreGrid + stream.Between(0, kFibreGrid - 1);
  stroke.halfWidth = 0.8 + 2.2 * stream.Unit();
  stroke.colour = Shade(stream, 178, 124, 208, 22);
  // Most fibres run from the lower left to the upper right, some across.
  double dx = stream.Between(0, 3) == 0 ? -1.0 + 2.0 * stream.Unit() : 1.0;
  double dy = -0.9 + 1.1 * stream.Unit();
  double bend = (stream.Unit() - 0.5) * 0.10;
  const int pieces = stream.Between(14, 36);
  constexpr double kPiece = 11.0;
  static_assert(36 * 11 < kFibreReach, "a fibre must stay within its reach");
  for (int i = 0; i < pieces; ++i) {
    const double length = std::max(std::sqrt(dx * dx + dy * dy), 1e-3);
    dx /= length;
    dy /= length;
    stroke.x0 = stroke.x1;
    stroke.y0 = stroke.y1;
    stroke.x1 += dx * kPiece;
    stroke.y1 += dy * kPiece;
    PaintStroke(slide, stroke);
    const double turned = dx - dy * bend;
    dy += dx * bend;
    dx = turned;
    bend += (stream.Unit() - 0.5) * 0.06;
  }
}

// --- cells --------------------------------------------------------------------

void PaintCell(cv::Mat& slide, std::uint64_t seed, int gridX, int gridY) {
  RandomStream stream(seed, kStreamCell, ItemOf(gridX, gridY));
  if (stream.Between(0, 9) < 2) return;  // a gap in the tissue
  Ellipse body;
  body.x = gridX * kCellGrid + stream.Between(0, kCellGrid - 1);
  body.y = gridY * kCellGrid + stream.Between(0, kCellGrid - 1);
  body.major = 13.0 + 10.0 * stream.Unit();
  body.minor = body.major * (0.6 + 0.4 * stream.Unit());
  const double ax = stream.Unit() - 0.5;
  const double ay = stream.Unit() - 0.5;
  const double length = std::sqrt(ax * ax + ay * ay);
  if (length > 1e-3) {
    body.axisX = ax / length;
    body.axisY = ay / length;
  }
  body.colour = Shade(stream, 206, 158, 212, 16);
  body.opacity = stream.Between(90, 170);
  body.softness = 3.0;
  PaintEllipse(slide, body);

  Ellipse nucleus = body;
  nucleus.x += stream.Between(-3, 3);
  nucleus.y += stream.Between(-3, 3);
  nucleus.major = body.major * (0.36 + 0.2 * stream.Unit());
  nucleus.minor = nucleus.major * (0.65 + 0.35 * stream.Unit());
  nucleus.colour = Shade(stream, 140, 62, 104, 26);
  nucleus.opacity = stream.Between(200, 250);
  nucleus.softness = 1.0;
  PaintEllipse(slide, nucleus);

  const int grains = stream.Between(2, 5);
  for (int i = 0; i < grains; ++i) {
    Ellipse grain;
    grain.x = nucleus.x + (stream.Unit() - 0.5) * nucleus.minor;
    grain.y = nucleus.y + (stream.Unit() - 0.5) * nucleus.minor;
    grain.major = grain.minor = 0.9 + 1.3 * stream.Unit();
    grain.colour = Shade(stream, 96, 34, 62, 14);
    grain.opacity = 240;
    PaintEllipse(slide, grain);
  }
}

}  // namespace

cv::Mat PaintSlide(cv::Size size, std::uint64_t seed) {
  cv::Mat slide(size, CV_8UC3);
  PaintGround(slide, seed);
  // One square more on every side than the picture shows, since things stick out.
  const int fibreMargin = kFibreReach / kFibreGrid + 1;
  for (int y = -fibreMargin; y <= size.height / kFibreGrid + fibreMargin; ++y) {
    for (int x = -fibreMargin; x <= size.width / kFibreGrid + fibreMargin; ++x) {
      PaintFibre(slide, seed, x, y);
    }
  }
  for (int y = -1; y <= size.height / kCellGrid + 1; ++y) {
    for (int x = -1; x <= size.width / kCellGrid + 1; ++x) PaintCell(slide, seed, x, y);
  }
  return slide;
}

}  // namespace jqhost
