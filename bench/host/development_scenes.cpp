#include <opencv2/imgproc.hpp>

#include "host/doubt_scenes.h"
#include "host/scene_paint.h"

namespace jqbench {
namespace {

// Copper tracks with bends, pads and chips, anywhere.
cv::Mat Board(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat picture(size, CV_8UC3, cv::Scalar(40, 90, 30));
  const cv::Scalar copper(70, 140, 110);
  const int area = size.width * size.height;
  for (int i = 0; i < area / 6000; ++i) {
    cv::Point at = RandomPoint(size, random);
    const int width = random.uniform(2, 6);
    for (int bend = 0; bend < 4; ++bend) {
      const int length = random.uniform(-120, 120);
      const int kind = random.uniform(0, 3);
      const cv::Point to = at + cv::Point(kind == 1 ? 0 : length, kind == 0 ? 0 : length);
      cv::line(picture, at, to, copper, width, cv::LINE_AA);
      at = to;
    }
    cv::circle(picture, at, width + 3, cv::Scalar(150, 190, 200), cv::FILLED, cv::LINE_AA);
    cv::circle(picture, at, width, cv::Scalar(20, 20, 20), cv::FILLED, cv::LINE_AA);
  }
  for (int i = 0; i < area / 40000; ++i) {
    const cv::Point at = RandomPoint(size, random);
    const cv::Size body(random.uniform(30, 100), random.uniform(30, 100));
    for (int x = 4; x < body.width; x += 10)
      cv::rectangle(picture, cv::Rect(at.x + x, at.y - 8, 5, body.height + 16), Grey(190), -1);
    cv::rectangle(picture, cv::Rect(at, body), Grey(35), cv::FILLED);
  }
  AddTexture(picture, SmoothNoise(size, 1.0, random), 3);
  return picture;
}

// Even lines with a little dust.
cv::Mat Grating(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat picture(size, CV_8UC3, Grey(60));
  const int period = random.uniform(9, 40);
  for (int x = 0; x < size.width; x += period)
    cv::rectangle(picture, cv::Rect(x, 0, period / 2, size.height), Grey(190), cv::FILLED);
  for (int i = 0; i < size.width * size.height / 9000; ++i)
    cv::circle(picture, RandomPoint(size, random), random.uniform(1, 5),
               Grey(random.uniform(20, 240)), cv::FILLED, cv::LINE_AA);
  return picture;
}

cv::Mat Chequer(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat picture(size, CV_8UC3, Grey(50));
  const int side = random.uniform(8, 45);
  for (int y = 0; y * side < size.height; ++y)
    for (int x = y % 2; x * side < size.width; x += 2)
      cv::rectangle(picture, cv::Rect(x * side, y * side, side, side), Grey(200), cv::FILLED);
  AddTexture(picture, SmoothNoise(size, 1.5, random), 6);
  return picture;
}

// Plain weave: threads over and under each other, each with its own shade.
cv::Mat Weave(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat picture(size, CV_8UC3, Grey(20));
  const int pitch = random.uniform(10, 26);
  std::vector<int> across(size.height / pitch + 1), down(size.width / pitch + 1);
  for (int& shade : across) shade = random.uniform(120, 170);
  for (int& shade : down) shade = random.uniform(90, 140);
  for (int j = 0; j < static_cast<int>(across.size()); ++j) {
    for (int i = 0; i < static_cast<int>(down.size()); ++i) {
      const bool over = (i + j) % 2 == 0;
      const cv::Size half(over ? pitch * 3 / 5 : pitch * 2 / 5,
                          over ? pitch * 2 / 5 : pitch * 3 / 5);
      cv::ellipse(picture, cv::Point(i * pitch + pitch / 2, j * pitch + pitch / 2), half, 0, 0, 360,
                  Grey(over ? across[j] : down[i]), cv::FILLED, cv::LINE_AA);
    }
  }
  AddTexture(picture, SmoothNoise(size, 1.0, random), 7);
  return picture;
}

// Lines of signs that are made of a few strokes each.
cv::Mat Strokes(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat picture(size, CV_8UC3, Grey(225));
  const int height = random.uniform(12, 22);
  for (int y = height; y < size.height; y += 2 * height) {
    int x = random.uniform(0, 60);
    while (x < size.width) {
      const int width = height * 2 / 3;
      if (random.uniform(0, 6) > 0) {
        for (int stroke = 0; stroke < 3; ++stroke) {
          const cv::Point from(x + random.uniform(0, 3) * width / 2,
                               y + random.uniform(0, 3) * height / 2);
          const cv::Point to(x + random.uniform(0, 3) * width / 2,
                             y + random.uniform(0, 3) * height / 2);
          cv::line(picture, from, to, Grey(40), 2, cv::LINE_AA);
        }
      }
      x += width + 4;
    }
  }
  AddTexture(picture, SmoothNoise(size, 3.0, random), 2);
  return picture;
}

cv::Mat Cells(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat picture(size, CV_8UC3, cv::Scalar(225, 205, 230));
  AddTexture(picture, SmoothNoise(size, 8.0, random), 8);
  for (int i = 0; i < size.width * size.height / 900; ++i) {
    const cv::Point at = RandomPoint(size, random);
    const cv::Size half(random.uniform(6, 16), random.uniform(6, 16));
    const double angle = random.uniform(0, 180);
    cv::ellipse(picture, at, half, angle, 0, 360, cv::Scalar(190, random.uniform(120, 170), 200),
                cv::FILLED, cv::LINE_AA);
    cv::ellipse(picture, at, half / 2, angle, 0, 360, cv::Scalar(130, 60, 100), cv::FILLED,
                cv::LINE_AA);
  }
  cv::GaussianBlur(picture, picture, cv::Size(), 0.8);
  AddTexture(picture, SmoothNoise(size, 1.0, random), 2);
  return picture;
}

// Few faint points of light on black.
cv::Mat DimPoints(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat light(size, CV_8UC3, Grey(9));
  for (int i = 0; i < size.width * size.height / 1600; ++i)
    cv::circle(light, RandomPoint(size, random), random.uniform(1, 6), Grey(random.uniform(16, 60)),
               cv::FILLED, cv::LINE_AA);
  cv::GaussianBlur(light, light, cv::Size(), 1.2);
  return light;
}

// Texture of every coarseness, as earth or skin.
cv::Mat Ground(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat picture(size, CV_8UC3, cv::Scalar(95, 110, 120));
  for (const double coarseness : {0.7, 1.5, 4.0, 12.0, 40.0})
    AddTexture(picture, SmoothNoise(size, coarseness, random), 11);
  return picture;
}

// Rows of a few kinds of cells in random order, as in a gate array.
cv::Mat Gates(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  std::vector<cv::Mat> kinds;
  const int height = random.uniform(34, 60);
  for (int kind = 0; kind < 4; ++kind) {
    cv::Mat cell(height, 12 * random.uniform(2, 5), CV_8UC3, cv::Scalar(110, 105, 120));
    cv::rectangle(cell, cv::Rect(0, 0, cell.cols, 5), Grey(190), cv::FILLED);
    for (int x = 4; x < cell.cols; x += 12) {
      const int top = random.uniform(8, height / 2);
      cv::rectangle(cell, cv::Rect(x, top, 4, height - top - random.uniform(2, 10)), Grey(170), -1);
      cv::circle(cell, cv::Point(x + 2, top + 4), 3, Grey(40), cv::FILLED, cv::LINE_AA);
    }
    kinds.push_back(cell);
  }
  cv::Mat picture(size, CV_8UC3, Grey(80));
  for (int y = 0; y + height <= size.height; y += height) {
    for (int x = 0;;) {
      const cv::Mat& cell =
          kinds[static_cast<size_t>(random.uniform(0, 10) < 7 ? 0 : random.uniform(1, 4))];
      if (x + cell.cols > size.width) break;
      cell.copyTo(picture(cv::Rect(x, y, cell.cols, height)));
      x += cell.cols;
    }
  }
  cv::GaussianBlur(picture, picture, cv::Size(), 0.7);
  AddTexture(picture, SmoothNoise(size, 1.0, random), 4);
  return picture;
}

// Polished grains: each point has the shade of the nearest seed.
cv::Mat Grains(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  const int pitch = random.uniform(25, 45);
  const cv::Size cells(size.width / pitch + 3, size.height / pitch + 3);
  cv::Mat_<cv::Vec3f> seeds(cells);
  for (cv::Vec3f& value : seeds)
    value =
        cv::Vec3f(random.uniform(0.f, 1.f), random.uniform(0.f, 1.f), random.uniform(60.f, 200.f));
  cv::Mat picture(size, CV_8UC3);
  for (int y = 0; y < size.height; ++y) {
    for (int x = 0; x < size.width; ++x) {
      float nearest = 1e9f, shade = 0;
      for (int j = y / pitch; j < y / pitch + 3; ++j) {
        for (int i = x / pitch; i < x / pitch + 3; ++i) {
          const cv::Vec3f& value = seeds(j, i);
          const float dx = (static_cast<float>(i) - 1 + value[0]) * static_cast<float>(pitch) -
                           static_cast<float>(x);
          const float dy = (static_cast<float>(j) - 1 + value[1]) * static_cast<float>(pitch) -
                           static_cast<float>(y);
          const float distance = dx * dx + dy * dy;
          if (distance < nearest) nearest = distance, shade = value[2];
        }
      }
      picture.at<cv::Vec3b>(y, x) = cv::Vec3b::all(cv::saturate_cast<uchar>(shade));
    }
  }
  AddTexture(picture, SmoothNoise(size, 1.0, random), 5);
  return picture;
}

}  // namespace

std::vector<DoubtScene> DevelopmentScenes() {
  return {{"board", false, Board},          {"grating", true, Grating},  {"chequer", true, Chequer},
          {"weave", true, Weave},           {"strokes", false, Strokes}, {"cells", false, Cells},
          {"dim points", false, DimPoints}, {"ground", false, Ground},   {"gates", true, Gates},
          {"grains", false, Grains}};
}

}  // namespace jqbench
