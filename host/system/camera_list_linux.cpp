#include <fcntl.h>
#include <linux/videodev2.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <map>
#include <optional>
#include <utility>

#include "host/system/camera_list.h"

namespace jqhost {
namespace {

// Device numbers that are tried; the system hands out the lowest free ones.
constexpr int kMostDevices = 64;
// A camera that offers any size is listed with these, as far as it reaches.
constexpr int kUsualSizes[][2] = {
    {640, 480}, {1280, 720}, {1920, 1080}, {2592, 1944}, {3840, 2160}};

class Device {
 public:
  explicit Device(int number)
      : m_file(open(("/dev/video" + std::to_string(number)).c_str(),
                    O_RDWR | O_NONBLOCK | O_CLOEXEC)) {}
  ~Device() {
    if (m_file >= 0) close(m_file);
  }
  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;

  bool IsOpen() const { return m_file >= 0; }
  template <typename Argument>
  bool Ask(unsigned long request, Argument& argument) const {
    int answer = 0;
    do {
      answer = ioctl(m_file, request, &argument);
    } while (answer < 0 && errno == EINTR);
    return answer >= 0;
  }

 private:
  const int m_file;
};

// Sizes with their highest rate.
using Rates = std::map<std::pair<int, int>, double>;

double HighestRate(const Device& device, std::uint32_t format, int width, int height) {
  double highest = 0;
  v4l2_frmivalenum interval = {};
  interval.pixel_format = format;
  interval.width = static_cast<std::uint32_t>(width);
  interval.height = static_cast<std::uint32_t>(height);
  for (; device.Ask(VIDIOC_ENUM_FRAMEINTERVALS, interval); ++interval.index) {
    // Of a range, the shortest interval.
    const bool isOne = interval.type == V4L2_FRMIVAL_TYPE_DISCRETE;
    const v4l2_fract seconds = isOne ? interval.discrete : interval.stepwise.min;
    if (seconds.numerator > 0) {
      highest = std::max(highest, static_cast<double>(seconds.denominator) / seconds.numerator);
    }
    if (!isOne) break;
  }
  return highest;
}

void AddSize(const Device& device, std::uint32_t format, int width, int height, Rates& rates) {
  double& rate = rates[{width, height}];
  rate = std::max(rate, HighestRate(device, format, width, height));
}

void AddSizes(const Device& device, std::uint32_t format, Rates& rates) {
  v4l2_frmsizeenum size = {};
  size.pixel_format = format;
  for (; device.Ask(VIDIOC_ENUM_FRAMESIZES, size); ++size.index) {
    if (size.type == V4L2_FRMSIZE_TYPE_DISCRETE) {
      AddSize(device, format, static_cast<int>(size.discrete.width),
              static_cast<int>(size.discrete.height), rates);
      continue;
    }
    const int mostWidth = static_cast<int>(size.stepwise.max_width);
    const int mostHeight = static_cast<int>(size.stepwise.max_height);
    AddSize(device, format, mostWidth, mostHeight, rates);
    for (const auto& usual : kUsualSizes) {
      if (usual[0] < mostWidth && usual[1] < mostHeight) {
        AddSize(device, format, usual[0], usual[1], rates);
      }
    }
    break;
  }
}

std::vector<CameraMode> ModesOf(const Device& device) {
  Rates rates;
  v4l2_fmtdesc format = {};
  format.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
  for (; device.Ask(VIDIOC_ENUM_FMT, format); ++format.index) {
    AddSizes(device, format.pixelformat, rates);
  }
  std::vector<CameraMode> modes;
  for (const auto& [size, rate] : rates) modes.push_back({cv::Size(size.first, size.second), rate});
  std::sort(modes.begin(), modes.end(),
            [](const CameraMode& a, const CameraMode& b) { return a.size.area() > b.size.area(); });
  return modes;
}

std::optional<CameraInfo> Look(int number) {
  const Device device(number);
  v4l2_capability can = {};
  if (!device.IsOpen() || !device.Ask(VIDIOC_QUERYCAP, can)) return std::nullopt;
  const std::uint32_t caps =
      (can.capabilities & V4L2_CAP_DEVICE_CAPS) != 0 ? can.device_caps : can.capabilities;
  // A camera has a second device for what goes along with its frames.
  if ((caps & V4L2_CAP_VIDEO_CAPTURE) == 0) return std::nullopt;
  const char* name = reinterpret_cast<const char*>(can.card);
  return CameraInfo{number, std::string(name, strnlen(name, sizeof can.card)), ModesOf(device)};
}

}  // namespace

std::vector<CameraInfo> ListCameras() {
  std::vector<CameraInfo> cameras;
  for (int number = 0; number < kMostDevices; ++number) {
    if (std::optional<CameraInfo> camera = Look(number)) cameras.push_back(std::move(*camera));
  }
  return cameras;
}

}  // namespace jqhost
