#include "source/simulated_microscope.h"

#include <chrono>
#include <opencv2/imgcodecs.hpp>

#include "host/input_error.h"
#include "host/simulate/slide.h"
#include "host/source/picture_reader.h"

namespace jqscope {
namespace {

using Clock = std::chrono::steady_clock;

cv::Mat OpenSlide(const MicroscopeOptions& options) {
  if (options.slide.empty()) return jqhost::PaintSlide(options.scene, options.seed);
  std::string why;
  cv::Mat slide = jqhost::ReadPicture(options.slide, cv::IMREAD_COLOR, why);
  if (slide.empty()) throw jqhost::InputError("cannot read '" + options.slide + "': " + why);
  return cv::max(slide, 1);  // black means "no content" to the stitcher
}

class Microscope : public jqhost::FrameSource {
 public:
  Microscope(const MicroscopeOptions& options, Stage& stage, const jqhost::StopToken& stop)
      : m_options(options), m_stage(stage), m_stop(stop), m_slide(OpenSlide(options)) {
    m_frame = cv::Size(std::min(options.frame.width, m_slide.cols),
                       std::min(options.frame.height, m_slide.rows));
  }

  bool Next(jqhost::SourceFrame& frame, bool read) override {
    const std::chrono::duration<double> early = m_due - Clock::now();
    m_stop.Sleep(early.count());
    if (m_stop.Requested()) return false;
    m_due = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                               std::chrono::duration<double>(1.0 / m_options.framesPerSecond));
    frame = jqhost::SourceFrame();
    frame.number = ++m_number;
    frame.name = "frame " + std::to_string(m_number);
    // Each time, since another microscope, retired meanwhile, may have had the last word.
    m_stage.SetBounds(m_slide.size(), m_frame);
    Stage::State now = m_stage.Now();
    if (m_held) now.effects.exposure = 0;
    const bool isOurs = now.scene == m_slide.size() && now.frame == m_frame;
    if (!isOurs) frame.why = "the slide is being changed";
    if (read && isOurs) {
      frame.image =
          jqhost::TakeFrame(m_slide, now.corner, m_frame, m_number, now.effects, m_options.seed);
    }
    return true;
  }

  int Total() const override { return 0; }
  bool IsFileList() const override { return false; }
  bool HoldLight(bool hold) override {
    m_held = hold;
    return true;
  }

 private:
  const MicroscopeOptions m_options;
  Stage& m_stage;
  const jqhost::StopToken& m_stop;
  const cv::Mat m_slide;
  cv::Size m_frame;
  bool m_held = false;  // the exposure does not drift
  int m_number = 0;
  Clock::time_point m_due = Clock::now();
};

}  // namespace

std::unique_ptr<jqhost::FrameSource> OpenMicroscope(const MicroscopeOptions& options, Stage& stage,
                                                    const jqhost::StopToken& stop) {
  return std::make_unique<Microscope>(options, stage, stop);
}

}  // namespace jqscope
