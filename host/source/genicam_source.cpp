#include "host/source/genicam_source.h"

#include <arv.h>

#include <memory>
#include <mutex>

#include "host/input_error.h"
#include "host/source/genicam_pixels.h"

namespace jqhost {
namespace {

// Buffers that wait to be filled: frames that come while another one is stitched.
constexpr int kBuffers = 4;
// A camera that gives nothing for so long has gone; waiting looks at the stop that often.
constexpr double kPatience = 5.0;  // seconds
constexpr guint64 kSlice = 50000;  // microseconds

struct ObjectEnd {
  void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename Object>
using Owned = std::unique_ptr<Object, ObjectEnd>;

// What a call came to.
class Outcome {
 public:
  Outcome() = default;
  ~Outcome() { g_clear_error(&m_error); }
  Outcome(const Outcome&) = delete;
  Outcome& operator=(const Outcome&) = delete;
  GError** Place() {
    g_clear_error(&m_error);
    return &m_error;
  }
  bool Good() const { return m_error == nullptr; }
  std::string Text() const { return Good() ? std::string() : m_error->message; }

 private:
  GError* m_error = nullptr;
};

void AllowSimulatedCamera() {
  static std::once_flag once;
  std::call_once(once, [] { arv_enable_interface("Fake"); });
}

class GenicamSource : public FrameSource {
 public:
  GenicamSource(const std::string& name, const CameraMode& mode, const StopToken& stop)
      : m_stop(stop) {
    AllowSimulatedCamera();
    Outcome outcome;
    m_camera.reset(arv_camera_new(name.empty() ? nullptr : name.c_str(), outcome.Place()));
    if (!m_camera) {
      throw InputError("cannot open the GenICam camera" + (name.empty() ? "" : " '" + name + "'") +
                       (outcome.Good() ? "" : ": " + outcome.Text()));
    }
    Ask(mode);
    m_stream.reset(arv_camera_create_stream(m_camera.get(), nullptr, nullptr, outcome.Place()));
    if (!m_stream) throw InputError("the GenICam camera gives no frames: " + outcome.Text());
    const guint bytes = arv_camera_get_payload(m_camera.get(), outcome.Place());
    for (int i = 0; outcome.Good() && i < kBuffers; ++i) {
      arv_stream_push_buffer(m_stream.get(), arv_buffer_new(bytes, nullptr));
    }
    if (outcome.Good()) arv_camera_start_acquisition(m_camera.get(), outcome.Place());
    if (!outcome.Good()) throw InputError("the GenICam camera does not start: " + outcome.Text());
  }
  ~GenicamSource() override {
    Outcome ignored;
    arv_camera_stop_acquisition(m_camera.get(), ignored.Place());
  }

  bool Next(SourceFrame& frame, bool read) override {
    frame = SourceFrame();
    ArvBuffer* buffer = Wait();
    if (buffer == nullptr) return false;
    frame.number = ++m_number;
    frame.name = "frame " + std::to_string(m_number);
    if (arv_buffer_get_status(buffer) != ARV_BUFFER_STATUS_SUCCESS) {
      frame.why = "it came incomplete";
    } else if (read) {
      std::size_t length = 0;
      const void* bytes = arv_buffer_get_data(buffer, &length);
      frame.image = FrameFromBuffer(
          arv_buffer_get_image_pixel_format(buffer), bytes, length,
          cv::Size(arv_buffer_get_image_width(buffer), arv_buffer_get_image_height(buffer)),
          frame.why);
    }
    arv_stream_push_buffer(m_stream.get(), buffer);
    return true;
  }

  int Total() const override { return 0; }
  bool IsFileList() const override { return false; }
  bool Waits() const override { return true; }

  bool HoldLight(bool hold) override {
    const ArvAuto automatic = hold ? ARV_AUTO_OFF : ARV_AUTO_CONTINUOUS;
    ArvCamera* camera = m_camera.get();
    Outcome outcome;
    bool done =
        arv_camera_is_exposure_auto_available(camera, outcome.Place()) != 0 && outcome.Good();
    if (done) arv_camera_set_exposure_time_auto(camera, automatic, outcome.Place());
    done = done && outcome.Good();
    // What a camera does not have cannot change the light either.
    if (arv_camera_is_gain_auto_available(camera, outcome.Place()) != 0 && outcome.Good()) {
      arv_camera_set_gain_auto(camera, automatic, outcome.Place());
      done = done && outcome.Good();
    }
    if (arv_camera_is_feature_available(camera, "BalanceWhiteAuto", outcome.Place()) != 0 &&
        outcome.Good()) {
      arv_camera_set_string(camera, "BalanceWhiteAuto", hold ? "Off" : "Continuous",
                            outcome.Place());
      done = done && outcome.Good();
    }
    return done;
  }

 private:
  // A camera that has not the size or rate goes on with its own.
  void Ask(const CameraMode& mode) {
    Outcome ignored;
    if (!mode.size.empty()) {
      arv_camera_set_region(m_camera.get(), -1, -1, mode.size.width, mode.size.height,
                            ignored.Place());
    }
    if (mode.rate > 0) arv_camera_set_frame_rate(m_camera.get(), mode.rate, ignored.Place());
  }

  // Null when the camera has gone or a stop was asked for.
  ArvBuffer* Wait() {
    constexpr int kSlices = static_cast<int>(kPatience * 1e6 / kSlice);
    for (int i = 0; i < kSlices && !m_stop.Requested(); ++i) {
      if (ArvBuffer* buffer = arv_stream_timeout_pop_buffer(m_stream.get(), kSlice)) return buffer;
    }
    return nullptr;
  }

  const StopToken& m_stop;
  Owned<ArvCamera> m_camera;
  Owned<ArvStream> m_stream;  // ends before the camera
  int m_number = 0;
};

}  // namespace

bool HasGenicam() {
  return true;
}

std::vector<std::string> ListGenicamCameras() {
  arv_update_device_list();
  std::vector<std::string> names;
  for (unsigned i = 0; i < arv_get_n_devices(); ++i) {
    const std::string name = arv_get_device_id(i);
    if (name.rfind("Fake", 0) != 0) names.push_back(name);
  }
  return names;
}

std::unique_ptr<FrameSource> OpenGenicamCamera(const std::string& name, const CameraMode& mode,
                                               const StopToken& stop) {
  return std::make_unique<GenicamSource>(name, mode, stop);
}

}  // namespace jqhost
