#ifndef JQHOST_TESTS_RECORDED_SCENE_H
#define JQHOST_TESTS_RECORDED_SCENE_H

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "host/journal/journal_writer.h"
#include "host/run/push_session.h"
#include "jqstitch/run_program.h"
#include "support/scenes.h"

namespace jqhost_test {

/// A camera that wanders over a scene, in steps of which most frames are placed, and a
/// run that records them. All of it follows from the seed.
class RecordedScene {
 public:
  RecordedScene(const jqhost::StitchSettings& settings, std::uint64_t seed, int frames)
      : m_settings(settings) {
    RandomSource random(seed);
    const int level = settings.detectLevel;
    const cv::Size size = cv::Size(200, 160) * level;
    const cv::Size area = size * 4;
    const cv::Mat scene = settings.overlapMode == 0
                              ? scenes::Dense(random, area.height, area.width, level)
                              : scenes::Quiet(random, area.height, area.width, level);
    cv::Point corner((area - size) / 2);
    const std::vector<cv::Point> ways = scenes::Directions();
    for (int i = 0; i < frames; ++i) {
      jqhost::SourceFrame frame;
      frame.name = "frame " + std::to_string(i + 1);
      frame.number = i + 1;
      frame.image = scenes::Cut(scene, corner, size);
      m_frames.push_back(frame);
      // A little more than a tenth of the frame, which is taken in camera pixels while the
      // shift is taken at the working scale; now and then too little to be placed.
      const int step = (random.OneIn(5) ? 4 : random.Int(22, 26)) * level * level;
      cv::Point next = corner + ways[static_cast<std::size_t>(random.Int(0, 7))] * step;
      next.x = std::clamp(next.x, 0, area.width - size.width);
      next.y = std::clamp(next.y, 0, area.height - size.height);
      corner = next;
    }
  }

  const std::vector<jqhost::SourceFrame>& Frames() const { return m_frames; }
  const jqhost::StitchSettings& Settings() const { return m_settings; }

  /// A new journal in a folder that is not there yet.
  std::unique_ptr<jqhost::JournalWriter> NewJournal(const std::string& folder) const {
    return std::make_unique<jqhost::JournalWriter>(
        std::make_unique<jqhost::JournalFolder>(
            folder, jqhost::MakeHeader(m_settings, jqhost::PreparationSettings(), 1, {"0"})),
        jqhost::JournalPace());
  }

 private:
  jqhost::StitchSettings m_settings;
  std::vector<jqhost::SourceFrame> m_frames;
};

}  // namespace jqhost_test

#endif  // JQHOST_TESTS_RECORDED_SCENE_H
