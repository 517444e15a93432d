#include "support/scene.h"

#include <cstdlib>
#include <opencv2/imgproc.hpp>

namespace jqbench {
namespace {

constexpr int kNoiseMargin = 61;

// Even noise on a coarse grid, enlarged: one octave of texture.
void AddOctave(cv::Mat& picture, int grid, double amplitude, cv::RNG& random) {
  const cv::Size coarse(picture.cols / grid + 2, picture.rows / grid + 2);
  cv::Mat small(coarse, CV_8UC3), large;
  random.fill(small, cv::RNG::UNIFORM, 0, 256);
  cv::resize(small, large, picture.size(), 0, 0, cv::INTER_LINEAR);
  cv::addWeighted(picture, 1.0, large, amplitude / 128.0, -amplitude, picture);
}

void AddSpecks(cv::Mat& picture, double share, int contrast, cv::RNG& random) {
  constexpr int kSmallest = 2, kLargest = 6;
  constexpr double kMeanArea = 40.0;  // of an ellipse with such half-axes
  const auto count = static_cast<int>(share * static_cast<double>(picture.total()) / kMeanArea);
  for (int i = 0; i < count; ++i) {
    const cv::Point centre{random.uniform(0, picture.cols), random.uniform(0, picture.rows)};
    const cv::Size axes{random.uniform(kSmallest, kLargest), random.uniform(kSmallest, kLargest)};
    const int sign = random.uniform(0, 2) == 0 ? -1 : 1;
    cv::Scalar colour;
    for (int k = 0; k < 3; ++k) colour[k] = 128 + sign * random.uniform(contrast / 2, contrast);
    cv::ellipse(picture, centre, axes, random.uniform(0, 180), 0, 360, colour, cv::FILLED);
  }
}

}  // namespace

Scene::Scene(Subject subject, cv::Size frame, std::uint64_t seed)
    : m_frame(frame),
      m_period(frame.width * 3 / 2, frame.height * 3 / 2),
      m_subject(m_period, CV_8UC3, cv::Scalar::all(128)) {
  cv::RNG random(seed);
  const bool tissue = subject == Subject::kTissue;
  if (tissue) {
    for (const int grid : {160, 40, 12, 4}) AddOctave(m_subject, grid, 40.0, random);
  } else {
    AddOctave(m_subject, 200, 4.0, random);
  }
  // Faint where the mean difference of two frames has to stay below 5.
  AddSpecks(m_subject, tissue ? 0.02 : 0.10, tissue ? 50 : 28, random);
  cv::copyMakeBorder(m_subject, m_subject, 0, frame.height, 0, frame.width, cv::BORDER_WRAP);
  m_noise.create(frame.height + kNoiseMargin, frame.width + kNoiseMargin, CV_16SC3);
  const int level = tissue ? 3 : 1;
  random.fill(m_noise, cv::RNG::UNIFORM, -level, level + 1);
}

cv::Mat Scene::frame(int index, cv::Point position) const {
  // Two primes: the same noise comes back only after their product of frames.
  const cv::Point shift(index * 7 % kNoiseMargin, index * 11 % 59);
  const auto wrap = [](int value, int period) { return (value % period + period) % period; };
  const cv::Point start(wrap(position.x, m_period.width), wrap(position.y, m_period.height));
  cv::Mat out;
  cv::add(m_subject(cv::Rect(start, m_frame)), m_noise(cv::Rect(shift, m_frame)), out,
          cv::noArray(), CV_8U);
  return out;
}

std::vector<cv::Point> WalkLoop(cv::Size frame, int count) {
  const cv::Point reach(frame.width * 3 / 4, frame.height * 3 / 4);
  static const cv::Point kTurns[] = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}};
  std::vector<cv::Point> path;
  cv::Point at(0, 0);
  int turn = 0;
  for (int i = 0; i < count; ++i) {
    path.push_back(at);
    const double share = i % 15 == 14 ? 0.28 : i % 7 == 6 ? 0.18 : 0.027;
    cv::Point next;
    do {
      next = at + cv::Point(static_cast<int>(kTurns[turn].x * share * frame.width),
                            static_cast<int>(kTurns[turn].y * share * frame.height));
      if (std::abs(next.x) <= reach.x && std::abs(next.y) <= reach.y) break;
      turn = (turn + 1) % 4;
    } while (true);
    at = next;
  }
  return path;
}

}  // namespace jqbench
