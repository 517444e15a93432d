#include <algorithm>
#include <opencv2/imgproc.hpp>

#include "host/doubt_scenes.h"
#include "host/scene_paint.h"

namespace jqbench {
namespace {

// Rows of one memory chip at an even pitch, joined by tracks that differ.
cv::Mat MemoryBoard(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat picture(size, CV_8UC3, cv::Scalar(70, 60, 25));
  const cv::Size pitch(random.uniform(110, 170), random.uniform(80, 130));
  for (int i = 0; i < size.width * size.height / 12000; ++i) {
    const cv::Point at = RandomPoint(size, random);
    const int length = random.uniform(10, 90);
    cv::line(picture, at, at + cv::Point(length, random.uniform(0, 2) * length),
             cv::Scalar(120, 120, 60), 3, cv::LINE_AA);
  }
  for (int y = 10; y < size.height; y += pitch.height) {
    for (int x = 10; x < size.width; x += pitch.width) {
      const cv::Rect body(x, y, pitch.width * 2 / 3, pitch.height / 2);
      for (int pin = 4; pin < body.width; pin += 9)
        cv::rectangle(picture, cv::Rect(x + pin, y - 7, 4, body.height + 14), Grey(200), -1);
      cv::rectangle(picture, body, Grey(30), cv::FILLED);
      cv::putText(picture, "4164", body.tl() + cv::Point(6, body.height / 2),
                  cv::FONT_HERSHEY_SIMPLEX, 0.5, Grey(120), 1, cv::LINE_AA);
    }
  }
  AddTexture(picture, SmoothNoise(size, 1.2, random), 3);
  return picture;
}

// A single-sided board: round pads on a raster, joined at random by arcs and tracks.
cv::Mat RasterBoard(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat picture(size, CV_8UC3, cv::Scalar(60, 110, 140));
  constexpr int kRaster = 18;
  for (int y = 0; y < size.height; y += kRaster) {
    for (int x = 0; x < size.width; x += kRaster) {
      if (random.uniform(0, 3) == 0) continue;
      const cv::Point at(x, y);
      const cv::Point to = at + cv::Point(random.uniform(-2, 3), random.uniform(-2, 3)) * kRaster;
      cv::line(picture, at, to, cv::Scalar(150, 190, 215), random.uniform(2, 6), cv::LINE_AA);
      if (random.uniform(0, 2) == 0)
        cv::circle(picture, at, 5, cv::Scalar(170, 205, 225), cv::FILLED, cv::LINE_AA);
    }
  }
  cv::GaussianBlur(picture, picture, cv::Size(), 0.9);
  return picture;
}

// Sloping sine fringes whose contrast drifts.
cv::Mat Fringes(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  const double angle = random.uniform(0.0, CV_PI);
  const double wave = 2 * CV_PI / random.uniform(12.0, 45.0);
  const cv::Mat drift = SmoothNoise(size, 60, random);
  cv::Mat light(size, CV_32FC1);
  for (int y = 0; y < size.height; ++y)
    for (int x = 0; x < size.width; ++x)
      light.at<float>(y, x) =
          static_cast<float>((1 + 0.2 * drift.at<float>(y, x)) *
                             std::sin(wave * (x * std::cos(angle) + y * std::sin(angle))));
  cv::Mat picture(size, CV_8UC3, Grey(120));
  AddTexture(picture, light, 60);
  AddTexture(picture, SmoothNoise(size, 0.8, random), 5);
  return picture;
}

// Hexagonal lattice of holes, some of them closed.
cv::Mat Honeycomb(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat picture(size, CV_8UC3, Grey(170));
  const int pitch = random.uniform(16, 40);
  for (int row = 0; row * pitch * 7 / 8 < size.height; ++row) {
    for (int column = 0; column * pitch < size.width; ++column) {
      const cv::Point at(column * pitch + (row % 2) * pitch / 2, row * pitch * 7 / 8);
      const int shade = random.uniform(0, 60) == 0 ? 140 : 50;
      cv::circle(picture, at, pitch / 3, Grey(shade), cv::FILLED, cv::LINE_AA);
    }
  }
  AddTexture(picture, SmoothNoise(size, 2.0, random), 4);
  return picture;
}

// Twill: short sloping floats, each of its own brightness.
cv::Mat Twill(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat picture(size, CV_8UC3, cv::Scalar(70, 50, 40));
  const int pitch = random.uniform(7, 16);
  for (int j = 0; j * pitch < size.height; ++j) {
    for (int i = -(j % 4); i * pitch < size.width; i += 4) {
      const int shade = random.uniform(135, 160);
      const cv::Point from(i * pitch, j * pitch);
      cv::line(picture, from, from + cv::Point(2 * pitch, 0), Grey(shade), pitch * 2 / 3,
               cv::LINE_AA);
    }
  }
  cv::GaussianBlur(picture, picture, cv::Size(), 1.0);
  AddTexture(picture, SmoothNoise(size, 0.8, random), 6);
  return picture;
}

// A printed page of words.
cv::Mat Page(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat picture(size, CV_8UC3, cv::Scalar(215, 225, 230));
  const double scale = random.uniform(0.5, 0.9);
  const int pitch = static_cast<int>(34 * scale);
  for (int y = pitch; y < size.height; y += pitch) {
    int x = random.uniform(0, 30);
    while (x < size.width) {
      std::string word;
      for (int letters = random.uniform(1, 9); letters > 0; --letters)
        word += static_cast<char>('a' + random.uniform(0, 26));
      cv::putText(picture, word, cv::Point(x, y), cv::FONT_HERSHEY_COMPLEX, scale, Grey(35), 1,
                  cv::LINE_AA);
      int base = 0;
      x += cv::getTextSize(word + "n", cv::FONT_HERSHEY_COMPLEX, scale, 1, &base).width;
    }
  }
  return picture;
}

cv::Mat Fibres(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat picture(size, CV_8UC3, Grey(200));
  for (int i = 0; i < size.width * size.height / 2500; ++i) {
    cv::Point at = RandomPoint(size, random);
    double angle = random.uniform(0.0, 2 * CV_PI);
    const int shade = random.uniform(60, 210), width = random.uniform(1, 4);
    for (int piece = 0; piece < 8; ++piece) {
      angle += random.uniform(-0.4, 0.4);
      const cv::Point to = at + cv::Point(static_cast<int>(20 * std::cos(angle)),
                                          static_cast<int>(20 * std::sin(angle)));
      cv::line(picture, at, to, Grey(shade), width, cv::LINE_AA);
      at = to;
    }
  }
  cv::GaussianBlur(picture, picture, cv::Size(), 0.7);
  return picture;
}

// Faint soft blobs, hardly above the dark.
cv::Mat DimBlobs(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat picture(size, CV_8UC3, cv::Scalar(8, 12, 6));
  for (int i = 0; i < size.width * size.height / 3500; ++i) {
    const cv::Point at = RandomPoint(size, random);
    const cv::Size half(random.uniform(3, 18), random.uniform(3, 18));
    cv::ellipse(picture, at, half, random.uniform(0, 180), 0, 360,
                cv::Scalar(12, random.uniform(20, 50), 10), cv::FILLED, cv::LINE_AA);
  }
  cv::GaussianBlur(picture, picture, cv::Size(), 2.0);
  return picture;
}

// Metal: fine scratches mostly along one direction, and pits.
cv::Mat Metal(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat picture(size, CV_8UC3, Grey(140));
  cv::Mat brushed = SmoothNoise(size, 0.0, random);
  cv::blur(brushed, brushed, cv::Size(61, 1));
  AddTexture(picture, brushed, 80);
  for (int i = 0; i < size.width * size.height / 5000; ++i) {
    const cv::Point at = RandomPoint(size, random);
    if (random.uniform(0, 2) == 0) {
      cv::circle(picture, at, random.uniform(1, 4), Grey(60), cv::FILLED, cv::LINE_AA);
    } else {
      const cv::Point to = at + cv::Point(random.uniform(-80, 80), random.uniform(-25, 25));
      cv::line(picture, at, to, Grey(random.uniform(90, 220)), 1, cv::LINE_AA);
    }
  }
  return picture;
}

// Rings of many sizes, as bubbles or pollen.
cv::Mat Bubbles(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat picture(size, CV_8UC3, cv::Scalar(190, 180, 150));
  AddTexture(picture, SmoothNoise(size, 25.0, random), 10);
  for (int i = 0; i < size.width * size.height / 3000; ++i) {
    const cv::Point at = RandomPoint(size, random);
    const int radius = random.uniform(4, 30);
    cv::circle(picture, at, radius, Grey(random.uniform(60, 130)), 2, cv::LINE_AA);
    cv::circle(picture, at - cv::Point(radius / 3, radius / 3), radius / 5 + 1, Grey(240),
               cv::FILLED, cv::LINE_AA);
  }
  return picture;
}

// Brickwork in running bond: even in shape, each brick of its own shade.
cv::Mat Bricks(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat picture(size, CV_8UC3, Grey(180));
  const cv::Size brick(random.uniform(40, 90), random.uniform(18, 36));
  for (int row = 0; row * brick.height < size.height; ++row) {
    for (int x = -(row % 2) * brick.width / 2; x < size.width; x += brick.width) {
      const int shade = random.uniform(-25, 25);
      cv::rectangle(picture, cv::Rect(x, row * brick.height, brick.width - 4, brick.height - 4),
                    cv::Scalar(60 + shade, 75 + shade, 140 + shade), cv::FILLED);
    }
  }
  AddTexture(picture, SmoothNoise(size, 1.5, random), 8);
  return picture;
}

// Notes on squared paper.
cv::Mat SquaredPaper(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat picture(size, CV_8UC3, cv::Scalar(235, 235, 230));
  const int pitch = random.uniform(16, 30);
  for (int x = 0; x < size.width; x += pitch)
    cv::line(picture, cv::Point(x, 0), cv::Point(x, size.height), cv::Scalar(220, 190, 170), 1);
  for (int y = 0; y < size.height; y += pitch)
    cv::line(picture, cv::Point(0, y), cv::Point(size.width, y), cv::Scalar(220, 190, 170), 1);
  for (int i = 0; i < size.width * size.height / 9000; ++i) {
    const std::string sign(1, static_cast<char>('!' + random.uniform(0, 90)));
    cv::putText(picture, sign, RandomPoint(size, random), cv::FONT_HERSHEY_SCRIPT_SIMPLEX,
                random.uniform(0.8, 2.0), cv::Scalar(120, 40, 30), 2, cv::LINE_AA);
  }
  AddTexture(picture, SmoothNoise(size, 2.0, random), 2);
  return picture;
}

}  // namespace

std::vector<DoubtScene> EvaluationScenes() {
  return {{"memory board", true, MemoryBoard},
          {"raster board", false, RasterBoard},
          {"fringes", true, Fringes},
          {"honeycomb", true, Honeycomb},
          {"twill", true, Twill},
          {"page", false, Page},
          {"fibres", false, Fibres},
          {"dim blobs", false, DimBlobs},
          {"metal", false, Metal},
          {"bubbles", false, Bubbles},
          {"bricks", true, Bricks},
          {"squared paper", true, SquaredPaper}};
}

}  // namespace jqbench
