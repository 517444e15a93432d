#include "report/flat_section.h"

#include <memory>
#include <vector>

#include "jqimagestitching.h"
#include "report/statistics.h"
#include "report/stopwatch.h"
#include "support/host_record.h"
#include "support/scene.h"

namespace jqbench {
namespace {

constexpr std::uint64_t kSeed = 20240504;

class Run {
 public:
  Run(const Scene& scene, cv::Size frame, cv::Point at = {}, int index = 0)
      : m_scene(scene), m_frame(frame), m_at(at), m_index(index) {
    step(0.0, 0.0);
    step(0.02, 0.0);
  }

  /// Milliseconds for the frame that lies by these shares of a frame further on.
  double step(double x, double y) {
    m_at += cv::Point(static_cast<int>(x * m_frame.width), static_cast<int>(y * m_frame.height));
    const cv::Mat picture = m_scene.frame(m_index++, m_at);
    _tagJQIMG record = HostRecord(picture);
    return Milliseconds([&] { m_stitcher.Stitching(&record, 0, 1, 8); });
  }

  /// A run with the smallest mosaic whose next frames are the same as this one's.
  std::unique_ptr<Run> beginAnew() const {
    const cv::Point back(static_cast<int>(0.02 * m_frame.width), 0);
    return std::make_unique<Run>(m_scene, m_frame, m_at - back, m_index - 2);
  }

  bool placed() const { return m_stitcher.IsLastFrameAccepted(); }
  std::size_t bytes() const {
    const cv::Mat mosaic = m_stitcher.GetMosaic();
    return mosaic.total() * mosaic.elemSize();
  }

 private:
  const Scene& m_scene;
  cv::Size m_frame;
  JQImageStitching m_stitcher;
  cv::Point m_at;
  int m_index = 0;
};

struct Growth {
  double last = 0;  // ms of the last frame that made the mosaic grow
  std::size_t bytes = 0;
};

Growth GrowTo(Run& run, std::size_t largeBytes) {
  constexpr int kMostSteps = 400;
  Growth growth;
  for (int i = 0; i < kMostSteps && run.bytes() < largeBytes; ++i) {
    const std::size_t before = run.bytes();
    const double ms = i % 2 == 0 ? run.step(0.6, 0.0) : run.step(0.0, 0.6);
    if (run.bytes() != before) growth = {ms, run.bytes()};
  }
  return growth;
}

// Reads the old mosaic and writes new memory, as growth has to.
double OnePass(std::size_t bytes) {
  constexpr int kRepeats = 3;
  const cv::Mat old(1, static_cast<int>(bytes / 4), CV_8UC4, cv::Scalar::all(1));
  std::vector<double> times;
  for (int i = 0; i < kRepeats; ++i) {
    times.push_back(Milliseconds([&] { const cv::Mat fresh = old.clone(); }));
  }
  return Median(times);
}

std::string Row(const char* what, const std::vector<double>& small,
                const std::vector<double>& large) {
  if (small.empty() || large.empty()) return cv::format("| %s | - | - | - |\n", what);
  return cv::format("| %s | %.2f | %.2f | %+.1f %% |\n", what, Median(small), Median(large),
                    100.0 * (Median(large) / Median(small) - 1.0));
}

}  // namespace

std::string FlatTable(cv::Size frame, std::size_t largeBytes, int frames) {
  const Scene scene(Subject::kTissue, frame, kSeed);
  Run large(scene, frame);
  const Growth growth = GrowTo(large, largeBytes);
  const std::unique_ptr<Run> small = large.beginAnew();

  std::vector<double> notPlaced[2], placed[2];
  Run* const runs[2] = {small.get(), &large};
  for (int i = 0; i < frames; ++i) {
    // Four small steps and one that is placed, to and fro within the mosaic.
    const bool jump = i % 5 == 4;
    const double way = (i / 5) % 2 == 0 ? 1.0 : -1.0;
    for (int turn = 0; turn < 2; ++turn) {
      const int which = (i + turn) % 2;
      const double ms = jump ? runs[which]->step(0.15 * way, 0.0)
                             : runs[which]->step(i % 2 == 0 ? 0.01 : -0.01, 0.0);
      (runs[which]->placed() ? placed : notPlaced)[which].push_back(ms);
    }
  }
  constexpr double kMega = 1e6;
  std::string text =
      cv::format("| %dx%d, mode 0 | mosaic %.0f MB, ms | mosaic %.0f MB, ms | difference |\n",
                 frame.width, frame.height, static_cast<double>(small->bytes()) / kMega,
                 static_cast<double>(large.bytes()) / kMega) +
      "|---|---:|---:|---:|\n" + Row("not placed", notPlaced[0], notPlaced[1]) +
      Row("placed", placed[0], placed[1]);
  if (growth.bytes != 0) {
    text += cv::format(
        "\nThe last growth, to %.0f MB, took %.1f ms with its frame; copying as much into new "
        "memory takes %.1f ms.\n",
        static_cast<double>(growth.bytes) / kMega, growth.last, OnePass(growth.bytes));
  }
  return text;
}

}  // namespace jqbench
