#include <cmath>
#include <cstdint>
#include <opencv2/videoio.hpp>

#include "host/input_error.h"
#include "host/source/frame_source.h"

namespace jqhost {
namespace {

// From the code of a pixel format. Those of 16 bits end in that number ("Y1", 0, 16), or in
// the bits of a pixel of 3 or 4 samples ("RGB", 48); others in a letter or a digit, which
// "Y800" has in common with 48.
bool HasWideSamples(std::uint32_t code) {
  const std::uint32_t first = code & 0xff, last = code >> 24;
  const bool isPacked = first == 'R' || first == 'B';
  return last == 16 || (isPacked && (last == 48 || last == 64));
}

// Where the system's camera driver is asked, automatic exposure has these values; 1 is by hand.
constexpr double kExposureByHand = 1, kExposureAutomatic = 3;

class VideoSource : public FrameSource {
 public:
  VideoSource(const std::string& path, int number, const CameraMode& mode)
      : m_name(path), m_waits(path.empty() || path.find("://") != std::string::npos) {
    if (path.empty()) {
      m_name = "camera " + std::to_string(number);
      if (!Open([&] { return m_capture.open(number); })) {
        throw InputError("cannot open " + m_name + " (is it connected, and free?)");
      }
      Ask(mode);
    } else {
      if (!Open([&] { return m_capture.open(path, cv::CAP_FFMPEG); })) {
        throw InputError((m_waits ? "cannot open '" : "cannot read '") + path +
                         (m_waits ? "': the stream does not answer or is of no known format"
                                  : "': it is neither a picture nor a video of a "
                                    "known format"));
      }
      const double format = m_capture.get(cv::CAP_PROP_CODEC_PIXEL_FORMAT);
      m_wide = format > 0 && HasWideSamples(static_cast<std::uint32_t>(format));
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
  bool GivesHighBytes() const override { return m_wide; }
  bool HoldLight(bool hold) override {
    if (!m_waits) return false;
    const bool exposure =
        Set(cv::CAP_PROP_AUTO_EXPOSURE, hold ? kExposureByHand : kExposureAutomatic);
    return Set(cv::CAP_PROP_AUTO_WB, hold ? 0 : 1) && exposure;
  }

 private:
  void Ask(const CameraMode& mode) {
    if (!mode.size.empty()) {
      Set(cv::CAP_PROP_FRAME_WIDTH, mode.size.width);
      Set(cv::CAP_PROP_FRAME_HEIGHT, mode.size.height);
    }
    if (mode.rate > 0) Set(cv::CAP_PROP_FPS, mode.rate);
  }
  bool Set(int property, double value) {
    return Open([&] { return m_capture.set(property, value); });
  }
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
  bool m_wide = false;  // 16 bits a sample in the file
  int m_total = 0;
  int m_number = 0;
};

}  // namespace

std::unique_ptr<FrameSource> MakeVideoSource(const std::string& path, int number,
                                             const CameraMode& mode) {
  return std::make_unique<VideoSource>(path, number, mode);
}

}  // namespace jqhost
