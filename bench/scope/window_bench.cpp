// How long the live window takes from a frame to the screen, and how long its thread is busy
// with one event, beside mosaics of several sizes. The window is a real one; a thread plays
// the camera.
#include <CLI/CLI.hpp>
#include <QEventLoop>
#include <QTimer>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include "scope/endless_slide.h"
#include "scope/timed_application.h"
#include "window/main_window.h"

namespace {

using jqscope::Inbox;
using jqscope::RunDesk;

// The stage's step from frame to frame as a share of the frame: while the mosaic is made, and
// while times are taken, as a person moves it.
constexpr double kGrowthStep = 0.4, kStep = 0.04;

struct BenchOptions {
  std::string size = "2592x1944", screen = "1366x768";
  std::vector<double> mosaics = {60, 1000};  // megabytes
  int frames = 150;                          // that times are taken of
  double rate = 8;                           // frames a second of the camera
  bool quick = false;
};

cv::Size ToSize(const std::string& text) {
  const std::size_t cross = text.find('x');
  if (cross == std::string::npos) throw CLI::ValidationError("a size is WIDTHxHEIGHT");
  return cv::Size(std::stoi(text.substr(0, cross)), std::stoi(text.substr(cross + 1)));
}

double Percentile(std::vector<double> values, double share) {
  if (values.empty()) return 0;
  std::sort(values.begin(), values.end());
  return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

// Handles events until `done` says so, which is asked now and then. @return false when it did
// not in ten minutes
template <typename Done>
bool WaitFor(int everyMilliseconds, Done done) {
  QEventLoop loop;
  bool good = false;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &loop, [&] {
    good = done();
    if (good) loop.quit();
  });
  look.start(everyMilliseconds);
  QTimer::singleShot(600000, &loop, &QEventLoop::quit);
  loop.exec();
  return good;
}

// Gives frames to the window's inbox on a thread of its own.
class Camera {
 public:
  Camera(const EndlessSlide& slide, Inbox& inbox) : m_slide(slide), m_inbox(inbox) {}

  void Put(cv::Point corner, Inbox::WhenFull whenFull) {
    jqscope::TimedFrame next;
    next.frame.number = ++m_number;
    next.frame.name = "frame " + std::to_string(m_number);
    next.frame.image = m_slide.Take(corner);
    next.taken = jqscope::Clock::now();
    m_inbox.Put(std::move(next), whenFull, m_stop);
  }

  // Line after line, until the mosaic has so many bytes. @return where the stage is then
  cv::Point Grow(double bytes, const std::atomic<double>& mosaicBytes) {
    const cv::Size frame = m_slide.Frame();
    const double frames = bytes / (3.0 * frame.area());
    const int columns = std::max(2, static_cast<int>(std::sqrt(frames) / kGrowthStep));
    const int across = static_cast<int>(kGrowthStep * frame.width);
    const int down = static_cast<int>(kGrowthStep * frame.height);
    for (int i = 0; mosaicBytes < bytes && i < 2000; ++i) {
      const int row = i / columns, column = i % columns;
      m_corner = cv::Point((row % 2 == 0 ? column : columns - 1 - column) * across, row * down);
      Put(m_corner, Inbox::WhenFull::kWait);
    }
    return m_corner;
  }

  // Up and down at the pace of a hand, until enough was seen.
  void Wander(cv::Point from, double rate, const std::atomic<bool>& enough) {
    const int step = static_cast<int>(kStep * m_slide.Frame().height);
    auto due = jqscope::Clock::now();
    for (int i = 0; !enough; ++i) {
      const int phase = i % 20;
      Put(from - cv::Point(0, (phase < 10 ? phase : 20 - phase) * step), Inbox::WhenFull::kReplace);
      due += std::chrono::duration_cast<jqscope::Clock::duration>(
          std::chrono::duration<double>(1 / rate));
      std::this_thread::sleep_until(due);
    }
  }

 private:
  const EndlessSlide& m_slide;
  Inbox& m_inbox;
  const jqhost::StopToken m_stop;
  int m_number = 0;
  cv::Point m_corner;
};

// Seconds of the processor that the stitching thread has used.
double StitcherSeconds(jqscope::MainWindow& window) {
  std::promise<double> used;
  window.Work().Thread().Post([&used](RunDesk&) { used.set_value(ThreadSeconds()); });
  return used.get_future().get();
}

// False when the mosaic did not come to its size or no frame came to the screen.
bool Measure(TimedApplication& application, const EndlessSlide& slide, double bytes,
             const BenchOptions& o) {
  jqscope::Options options;
  options.source = ".";  // files wait for a run of their own, so that no other frame comes
  options.fresh = true;
  jqscope::MainWindow window(options, nullptr);
  window.Action("find")->trigger();
  const cv::Size screen = ToSize(o.screen);
  window.resize(screen.width, screen.height);
  window.show();
  std::atomic<double> mosaicBytes{0};
  QObject::connect(&window.Work(), &jqscope::Session::reported, &window,
                   [&] { mosaicBytes = static_cast<double>(window.Report().mosaicBytes); });
  window.Work().Thread().Post([](RunDesk& desk) {
    desk.Start(jqscope::RunSettings(), jqscope::JournalEnd::kLeave);
    desk.showsLive = true;
  });

  Camera camera(slide, window.Work().Thread().Frames());
  cv::Point at;
  std::atomic<bool> grown{false}, enough{false};
  std::thread thread([&] {
    at = camera.Grow(bytes, mosaicBytes);
    grown = true;
    camera.Wander(at, o.rate, enough);
  });
  const bool ready = WaitFor(50, [&] { return grown.load(); });
  window.View().OneToOne();
  const auto settled = jqscope::Clock::now() + std::chrono::milliseconds(o.quick ? 50 : 1000);
  WaitFor(20, [&] { return jqscope::Clock::now() > settled; });

  std::vector<double> latencies, events, processor;
  application.TakeLongest();
  QObject::connect(&window.View(), &jqscope::MosaicView::shown, &window, [&](double seconds) {
    latencies.push_back(1000 * seconds);
    const TimedApplication::Longest longest = application.TakeLongest();
    events.push_back(1000 * longest.clock);
    processor.push_back(1000 * longest.processor);
  });
  const auto before = static_cast<int>(window.Report().path.size());
  const int stitchedBefore = window.Report().stitched;
  const double usedBefore = StitcherSeconds(window);
  const bool shown = WaitFor(100, [&] { return static_cast<int>(latencies.size()) >= o.frames; });
  const double used = 1000 * (StitcherSeconds(window) - usedBefore);
  const int stitched = std::max(1, window.Report().stitched - stitchedBefore);
  enough = true;
  thread.join();
  const jqscope::RunReport& report = window.Report();
  std::printf(
      "mosaic %.0f MB, view %.0f MB, %d of %zu frames placed\n"
      "  frame to screen: p50 %.1f ms, p95 %.1f ms; processor of the stitching thread %.1f ms a "
      "frame\n"
      "  longest event of the window's thread: p50 %.1f ms, p95 %.1f ms; processor p50 %.1f ms, "
      "p95 "
      "%.1f ms\n",
      mosaicBytes / 1e6, static_cast<double>(window.Work().Tiles().Bytes()) / 1e6,
      static_cast<int>(report.path.size()) - before, latencies.size(), Percentile(latencies, 0.5),
      Percentile(latencies, 0.95), used / stitched, Percentile(events, 0.5),
      Percentile(events, 0.95), Percentile(processor, 0.5), Percentile(processor, 0.95));
  std::fflush(stdout);
  return ready && shown && mosaicBytes >= bytes && static_cast<int>(report.path.size()) > before;
}

int Run(int argc, char** argv) {
  BenchOptions o;
  CLI::App arguments("Times of the live window beside mosaics of several sizes");
  arguments.add_option("--size", o.size, "of a camera frame");
  arguments.add_option("--screen", o.screen, "of the window");
  arguments.add_option("--mosaics", o.mosaics, "megabytes")->delimiter(',');
  arguments.add_option("--frames", o.frames, "times are taken of so many");
  arguments.add_option("--rate", o.rate, "frames a second of the camera");
  arguments.add_flag("--quick", o.quick, "small pictures, to see that it runs");
  CLI11_PARSE(arguments, argc, argv);
  if (o.quick) {
    o.size = "640x480";
    o.mosaics = {5, 10};
    o.frames = 8;
    o.rate = 60;
  }
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  // The platform without a display complains about every new layout.
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  int count = 1;
  TimedApplication application(count, argv);
  const EndlessSlide slide(ToSize(o.size));
  std::printf("frames of %s, window of %s, %g frames a second\n", o.size.c_str(), o.screen.c_str(),
              o.rate);
  bool good = true;
  for (const double megabytes : o.mosaics) {
    good = Measure(application, slide, 1e6 * megabytes, o) && good;
  }
  if (!good) std::fprintf(stderr, "a mosaic did not grow, or no frame was shown\n");
  return good ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  return Run(argc, argv);
}
