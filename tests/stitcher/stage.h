#ifndef JQ_TESTS_STITCHER_STAGE_H
#define JQ_TESTS_STITCHER_STAGE_H

#include <algorithm>
#include <vector>

#include "support/scenes.h"

/// A camera over a scene: takes ordinary steps, and now and then a step that is too
/// short, a jump, a way back, a frame without content or one with dark patches.
class Stage {
 public:
  /// `mode` and `level` are those of the run. Shifts are measured in the working
  /// scale against the camera frame, so a higher level needs longer steps.
  Stage(RandomSource& random, int mode, int level) : m_random(random), m_level(level) {
    const int scale[] = {0, 10, 19, 24};
    m_size = cv::Size{random.Int(200, 241) * scale[level] / 10,
                      random.Int(180, 221) * scale[level] / 10};
    const int rows = m_size.height * 3, cols = m_size.width * 3;
    m_scene = mode == 0 ? scenes::Dense(random, rows, cols, level)
                        : scenes::Quiet(random, rows, cols, level);
    m_at = cv::Point(m_size.width, m_size.height);
    m_placed = {m_at};
  }

  cv::Mat First() { return Cut(); }

  cv::Mat Next() {
    switch (m_random.Int(0, 19)) {
      case 0:
      case 1:  // too short
        Move(1, 7);
        return Cut();
      case 2:  // a jump
        m_at = cv::Point{m_random.Int(0, m_scene.cols), m_random.Int(0, m_scene.rows)};
        return Cut();
      case 3:  // back to a frame that is placed already, not quite exactly
        m_at = m_placed[m_random.Int(0, static_cast<int>(m_placed.size()) - 1)];
        m_at += cv::Point{m_random.Int(-9, 9), m_random.Int(-9, 9)};
        return Cut();
      case 4:  // without content
        return cv::Mat(m_size, CV_8UC3, cv::Scalar::all(m_random.Int(0, 255)));
      case 5:
      case 6: {  // with dark patches
        Step();
        cv::Mat frame = Cut();
        pictures::BlackHoles(m_random, frame);
        return frame;
      }
      default:
        Step();
        return Cut();
    }
  }

  /// Tells whether the frame given last was placed: steps start from a placed one.
  void Placed(bool placed) {
    if (placed) m_placed.push_back(m_at);
  }
  /// The newest placed frame was taken back.
  void TakenBack() {
    if (m_placed.size() > 1) m_placed.pop_back();
  }
  /// The run goes on so many pixels from its newest frame.
  void Continued(cv::Point by) { m_placed.push_back(m_placed.back() + by); }

 private:
  void Step() { Move(10 * m_level + 2, 10 * m_level + 13); }

  // From the newest placed frame into a random direction, by a percentage of the
  // frame along the longer way.
  void Move(int low, int high) {
    m_at = m_placed.back();
    const cv::Point direction = scenes::Directions()[m_random.Int(0, 7)];
    const int percent = m_random.Int(low, high);
    m_at.x += direction.x * m_size.width * percent / 100;
    m_at.y += direction.y * m_size.height * (direction.x != 0 ? percent * 2 / 3 : percent) / 100;
  }

  cv::Mat Cut() {
    m_at.x = std::clamp(m_at.x, 0, m_scene.cols - m_size.width);
    m_at.y = std::clamp(m_at.y, 0, m_scene.rows - m_size.height);
    return scenes::Cut(m_scene, m_at, m_size);
  }

  RandomSource& m_random;
  int m_level;
  cv::Size m_size;
  cv::Mat m_scene;
  cv::Point m_at;
  std::vector<cv::Point> m_placed;
};

/// The frame in one of the forms in which a camera delivers it; all give the same
/// picture.
inline cv::Mat AsDelivered(RandomSource& random, const cv::Mat& frame) {
  cv::Mat delivered = frame;
  if (random.OneIn(4)) cv::cvtColor(delivered, delivered, cv::COLOR_BGR2BGRA);
  if (random.OneIn(4)) {
    delivered.convertTo(delivered, CV_16U, 256);
    cv::Mat low = pictures::Noise(random, frame.rows, frame.cols, CV_8UC(delivered.channels()));
    low.convertTo(low, CV_16U);
    delivered += low;
  }
  return delivered;
}

#endif  // JQ_TESTS_STITCHER_STAGE_H
