// How much memory and time saving a large picture takes, beside the picture itself.

#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <opencv2/imgproc.hpp>

#include "host/output/save_picture.h"
#include "host/system/process_memory.h"

namespace {

namespace fs = std::filesystem;

// A mosaic as a camera gives it, cheap to make at any size: blurred blobs, noise of a few
// grey levels, and a quarter that no frame covers. One pattern over and over, shifted, so
// that packers find nothing far away to repeat.
cv::Mat MakeMosaic(int side) {
  constexpr int kPattern = 1021;
  cv::RNG random(5);
  cv::Mat pattern(kPattern, kPattern, CV_8UC3), noise(kPattern, kPattern, CV_8UC3);
  random.fill(pattern, cv::RNG::UNIFORM, 0, 256);
  cv::GaussianBlur(pattern, pattern, {0, 0}, 6);
  cv::normalize(pattern, pattern, 20, 235, cv::NORM_MINMAX);
  random.fill(noise, cv::RNG::NORMAL, 6, 3);
  pattern += noise;
  cv::Mat mosaic(side, side, CV_8UC3);
  for (int y = 0; y < side; y += kPattern) {
    for (int x = 0; x < side; x += kPattern) {
      const cv::Rect place = cv::Rect(x, y, kPattern, kPattern) & cv::Rect(0, 0, side, side);
      pattern(cv::Rect(cv::Point(), place.size())).copyTo(mosaic(place));
    }
  }
  mosaic(cv::Rect(side / 2, side / 2, side / 2, side / 2)).setTo(cv::Scalar::all(0));
  return mosaic;
}

// The largest resident size since the last reset.
double PeakBytes() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    double kilobytes = 0;
    if (word == "VmHWM:" && status >> kilobytes) return 1024 * kilobytes;
  }
  return 0;
}

void ResetPeak() {
  std::ofstream("/proc/self/clear_refs") << 5;
}

std::uintmax_t SizeOnDisk(const fs::path& path) {
  if (!fs::is_directory(path)) return fs::exists(path) ? fs::file_size(path) : 0;
  std::uintmax_t bytes = 0;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path)) {
    if (entry.is_regular_file()) bytes += entry.file_size();
  }
  return bytes;
}

void Measure(const cv::Mat& mosaic, const fs::path& folder, const std::string& name) {
  jqhost::SaveOptions options;
  options.path = (folder / name).string();
  options.background = {{255, 255, 255}};
  options.pixelSize = cv::Size2d(0.345e-6, 0.345e-6);
  ResetPeak();
  const double before = static_cast<double>(jqhost::ResidentBytes());
  const auto start = std::chrono::steady_clock::now();
  const std::clock_t processor = std::clock();
  jqhost::SavePicture(mosaic, options, jqhost::SaveProgress(), jqhost::StopToken());
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  const double worked = static_cast<double>(std::clock() - processor) / CLOCKS_PER_SEC;
  const auto bytes =
      SizeOnDisk(options.path) + SizeOnDisk(folder / (fs::path(name).stem().string() + "_files"));
  std::printf(
      "%-13s %6.1f s (processor %6.1f s), %5.0f MB beside the mosaic of %.0f MB, %.0f MB on the "
      "disk\n",
      name.c_str(), seconds, worked, (PeakBytes() - before) / 1e6,
      static_cast<double>(mosaic.total() * mosaic.elemSize()) / 1e6,
      static_cast<double>(bytes) / 1e6);
  std::fflush(stdout);
  fs::remove(options.path);
  fs::remove_all(folder / (fs::path(name).stem().string() + "_files"));
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app("Measures memory and time of saving a large picture.", "jqbench_save");
  int side = 30000;
  std::string folder = ".";
  std::vector<std::string> formats = {"png", "ome.tif", "dzi"};
  bool quick = false;
  app.add_option("--side", side, "pixels of a side (30000)")->check(CLI::Range(64, 60000));
  app.add_option("--folder", folder, "where the pictures are written, and removed again (.)");
  app.add_option("--formats", formats, "png, ome.tif, dzi (all)")->delimiter(',');
  app.add_flag("--quick", quick, "a small picture, to see that it works");
  CLI11_PARSE(app, argc, argv);
  try {
    const cv::Mat mosaic = MakeMosaic(quick ? 1500 : side);
    for (const std::string& format : formats) Measure(mosaic, folder, "saved." + format);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "jqbench_save: %s\n", error.what());
    return 1;
  }
  return 0;
}
