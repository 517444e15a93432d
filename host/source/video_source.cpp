#include <cmath>
#include <opencv2/videoio.hpp>

#include "host/input_error.h"
#include "host/source/frame_source.h"

namespace jqhost {
namespace {

class VideoSource : public FrameSource {
 public:
  VideoSource(const std::string& path, int number)
      : m_name(path), m_waits(path.empty() || path.find("://") != std::string::npos) {
    if (path.empty()) {
      m_name = "camera " + std::to_string(number);
      if (!Open([&] { return m_capture.open(number); })) {
        throw InputError("cannot open " + m_name + " (is it connected, and free?)");
      }
    } else {
      if (!Open([&] { return m_capture.open(path, cv::CAP_FFMPEG); })) {
        throw InputError((m_waits ? "cannot open '" : "cannot read '") + path +
                         (m_waits ? "': the stream does not answer or is of no known format"
                                  : "': it is neither a picture nor a video of a "
                                    "known format"));
      }
      const double count = m_capture.get(cv::CAP_PROP_FRAME_COUNT);
      if (std::isfinite(count) && count > 0 && count < 1e9) m_total = static_cast<int>(count);
    }
  }

  bool Next(SourceFrame& frame, bool read) override {
    frame = SourceFrame();
    try {
      if (!m_capture.grab()) return false;
      frame.number = ++m_number;
      frame.name = "frame " + std::to_string(m_number);
      // The decoder reuses its buffer; the run may keep the frame.
      if (read) {
        cv::Mat shared;
        if (!m_capture.retrieve(shared) || shared.empty()) {
          frame.why = "it cannot be decoded";
        } else {
          frame.image = shared.clone();
        }
      }
    } catch (const cv::Exception&) {
      return false;
    }
    return true;
  }

  int Total() const override { return m_total; }
  bool IsFileList() const override { return false; }
  bool Waits() const override { return m_waits; }

 private:
  template <typename OpenIt>
  static bool Open(OpenIt&& openIt) {
    try {
      return openIt();
    } catch (const cv::Exception&) {
      return false;
    }
  }

  cv::VideoCapture m_capture;
  std::string m_name;
  const bool m_waits;
  int m_total = 0;
  int m_number = 0;
};

}  // namespace

std::unique_ptr<FrameSource> MakeVideoSource(const std::string& path, int number) {
  return std::make_unique<VideoSource>(path, number);
}

}  // namespace jqhost
