#ifndef JQSCOPE_SOURCE_STAGE_H
#define JQSCOPE_SOURCE_STAGE_H

#include <algorithm>
#include <mutex>
#include <opencv2/core.hpp>

#include "host/simulate/camera.h"

namespace jqscope {

/// The stage and the optics of the simulated microscope: moved by the window, looked at
/// by the camera on its own thread.
class Stage {
 public:
  /// Where the field of view may go; its top-left corner is kept inside. A new slide is
  /// first looked at in its middle.
  void SetBounds(cv::Size scene, cv::Size frame) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (scene == m_scene && frame == m_frame) return;
    m_scene = scene;
    m_frame = frame;
    m_corner = (cv::Point(scene.width, scene.height) - cv::Point(frame)) / 2;
  }
  void MoveTo(cv::Point corner) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_corner = corner;
    Confine();
  }
  void MoveBy(cv::Point step) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_corner += step;
    Confine();
  }
  void SetEffects(const jqhost::CameraEffects& effects) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_effects = effects;
  }

  struct State {
    cv::Size scene, frame;  ///< empty before the slide is there
    cv::Point corner;
    jqhost::CameraEffects effects;
  };
  State Now() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return {m_scene, m_frame, m_corner, m_effects};
  }

 private:
  void Confine() {
    if (m_scene.empty()) return;
    m_corner.x = std::max(0, std::min(m_corner.x, m_scene.width - m_frame.width));
    m_corner.y = std::max(0, std::min(m_corner.y, m_scene.height - m_frame.height));
  }

  mutable std::mutex m_mutex;
  cv::Size m_scene, m_frame;
  cv::Point m_corner;
  jqhost::CameraEffects m_effects;
};

}  // namespace jqscope

#endif  // JQSCOPE_SOURCE_STAGE_H
