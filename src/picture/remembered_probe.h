#ifndef JQ_PICTURE_REMEMBERED_PROBE_H
#define JQ_PICTURE_REMEMBERED_PROBE_H

#include <atomic>
#include <opencv2/core.hpp>
#include <optional>

namespace jqstitching {

/// What a probe of the image library found, remembered for each setting of
/// `cv::useOptimized`, with which the library may round differently. Safe to ask from
/// several threads. `Answer` is a bool or an enum.
template <class Answer>
class RememberedProbe {
 public:
  explicit constexpr RememberedProbe(Answer (*probe)()) : m_probe(probe) {}

  /// Nothing when the setting was changed while the probe ran, by another thread: what
  /// it found belongs to neither setting. The next call probes again.
  std::optional<Answer> answer() {
    const bool optimized = cv::useOptimized();
    std::atomic<int>& known = m_known[optimized ? 1 : 0];
    const int remembered = known.load();
    if (remembered != kNotYet) return static_cast<Answer>(remembered);
    const Answer found = m_probe();
    if (cv::useOptimized() != optimized) return std::nullopt;
    known.store(static_cast<int>(found));
    return found;
  }

 private:
  static constexpr int kNotYet = -1;
  Answer (*m_probe)();
  std::atomic<int> m_known[2] = {{kNotYet}, {kNotYet}};
};

}  // namespace jqstitching

#endif  // JQ_PICTURE_REMEMBERED_PROBE_H
