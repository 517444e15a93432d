#include "host/output/pyramid/vips_pixels.h"

#include <algorithm>

#include "host/input_error.h"
#include "host/output/pyramid/pyramid.h"

namespace jqhost {
namespace {

// Each thread holds a few tiles; more than these do not make saving faster.
constexpr int kMostThreads = 8;

// Once in a process. libvips remembers results for reuse, which would keep parts of a
// picture in memory that is saved once.
void StartLibvips() {
  static std::once_flag once;
  static bool started = false;
  std::call_once(once, [] {
    started = vips_init("jqhost") == 0;
    if (!started) return;
    vips_cache_set_max(0);
    vips_concurrency_set(std::min(vips_concurrency_get(), kMostThreads));
  });
  if (!started) throw InputError("libvips does not start");
}

// Its messages of several lines as one sentence.
std::string LibvipsMessage() {
  std::string text = vips_error_buffer();
  vips_error_clear();
  while (!text.empty() && text.back() == '\n') text.pop_back();
  for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos;) {
    text.replace(at, 1, "; ");
  }
  return text;
}

}  // namespace

bool HasLibvips() {
  return true;
}

VipsPixels::VipsPixels(const PixelSource& pixels, const SaveOptions& options,
                       const SaveProgress& progress, const StopToken& stop)
    : m_pixels(pixels), m_options(options), m_progress(progress), m_stop(stop) {
  StartLibvips();
  m_image = vips_image_new();
  // libvips counts pixels per millimetre, and takes 1 for a size that nobody knows.
  const cv::Size2d size = options.pixelSize.value_or(cv::Size2d(1e-3, 1e-3));
  const bool grey = pixels.Channels() == 1;
  vips_image_init_fields(m_image, pixels.Size().width, pixels.Size().height, pixels.Channels(),
                         VIPS_FORMAT_UCHAR, VIPS_CODING_NONE,
                         grey ? VIPS_INTERPRETATION_B_W : VIPS_INTERPRETATION_sRGB,
                         1e-3 / size.width, 1e-3 / size.height);
  if (vips_image_pipelinev(m_image, VIPS_DEMAND_STYLE_THINSTRIP, nullptr) != 0 ||
      vips_image_generate(m_image, nullptr, Generate, nullptr, this, nullptr) != 0) {
    g_object_unref(m_image);
    throw InputError("libvips takes no picture of this size: " + LibvipsMessage());
  }
  if (m_progress) {
    vips_image_set_progress(m_image, TRUE);
    g_signal_connect_data(m_image, "eval", reinterpret_cast<GCallback>(OnProgress), this, nullptr,
                          static_cast<GConnectFlags>(0));
  }
}

VipsPixels::~VipsPixels() {
  g_object_unref(m_image);
  // What libvips keeps for each thread; the caller's thread may end before the program.
  vips_thread_shutdown();
}

void VipsPixels::Read(VipsRegion& region) const {
  const VipsRect& area = region.valid;
  cv::Mat block(area.height, area.width, CV_8UC(m_pixels.Channels()),
                VIPS_REGION_ADDR(&region, area.left, area.top),
                static_cast<std::size_t>(VIPS_REGION_LSKIP(&region)));
  m_pixels.Read(cv::Rect(area.left, area.top, area.width, area.height), block);
}

// Called by the threads of libvips, into which nothing may be raised.
int VipsPixels::Generate(VipsRegion* region, void*, void* self, void*, gboolean*) {
  VipsPixels& pixels = *static_cast<VipsPixels*>(self);
  if (pixels.m_stop.Requested()) {
    const std::lock_guard<std::mutex> guard(pixels.m_lock);
    pixels.m_stopped = true;
    return -1;
  }
  try {
    pixels.Read(*region);
    return 0;
  } catch (...) {
    const std::lock_guard<std::mutex> guard(pixels.m_lock);
    pixels.m_raised = std::current_exception();
    return -1;
  }
}

void VipsPixels::OnProgress(VipsImage*, VipsProgress* progress, void* self) {
  const double share = static_cast<double>(progress->npels) /
                       static_cast<double>(std::max<gint64>(1, progress->tpels));
  static_cast<VipsPixels*>(self)->m_progress(std::min(1.0, share));
}

bool VipsPixels::Finish(int result) {
  const std::lock_guard<std::mutex> guard(m_lock);
  const std::string message = LibvipsMessage();
  if (m_raised) std::rethrow_exception(m_raised);
  if (m_stopped) return false;
  if (result != 0) throw InputError("cannot write '" + m_options.path + "': " + message);
  return true;
}

}  // namespace jqhost
