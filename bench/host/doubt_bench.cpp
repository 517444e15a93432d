// How well doubtful placements are told: batch runs over scenes whose truth is known, each
// placement judged, and a table of what was wrong, what was right, and what was doubted.
// Exit code 1 when a wrong placement was trusted.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <opencv2/imgcodecs.hpp>
#include <string>
#include <vector>

#include "host/doubt_passes.h"
#include "host/doubt_scenes.h"
#include "host/verdict/doubt/placement_doubt.h"

namespace {

constexpr double kWrong = 8;  // frame pixels
constexpr int kFrames = 10;   // of a pass

struct Options {
  std::string set = "evaluation";
  int seeds = 6;
  int firstSeed = 1000;
  std::vector<std::string> pictures;
  bool quick = false;
};

struct Row {
  int placed = 0, wrong = 0, wrongDoubted = 0, right = 0, rightDoubted = 0;

  void operator+=(const Row& other) {
    placed += other.placed, wrong += other.wrong, wrongDoubted += other.wrongDoubted;
    right += other.right, rightDoubted += other.rightDoubted;
  }
};

struct Timing {
  double seconds = 0;  // of processor time
  int judged = 0;
};

Row JudgePass(const jqbench::Pass& pass, const std::string& folder, Timing& timing) {
  Row row;
  for (const jqbench::Placement& placement : jqbench::StitchBatch(pass.frames, folder)) {
    const auto index = [](int i) { return static_cast<std::size_t>(i); };
    const auto view = [&](int i) {
      return jqhost::MakePlacementView(jqhost::ReduceFrame(pass.frames[index(i)]));
    };
    const jqhost::PlacementView before = view(placement.before);
    // A run keeps the view of the frame before: one view and one judgement a placement.
    const std::clock_t start = std::clock();
    const jqhost::PlacementDoubt doubt =
        jqhost::JudgePlacement(before, view(placement.frame), placement.shift,
                               static_cast<double>(placement.agreeing) / placement.matched);
    timing.seconds += static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    ++timing.judged;
    const cv::Point truth =
        pass.corners[index(placement.frame)] - pass.corners[index(placement.before)];
    const cv::Point error = placement.shift - truth;
    const bool wrong = std::hypot(error.x, error.y) > kWrong;
    ++row.placed;
    ++(wrong ? row.wrong : row.right);
    if (doubt.doubtful) ++(wrong ? row.wrongDoubted : row.rightDoubted);
    if (wrong && !doubt.doubtful) {
      std::printf("trusted, %.0f px off: %d agree, correlation %.2f, rival %.2f\n",
                  std::hypot(error.x, error.y), placement.agreeing, doubt.agreement, doubt.rival);
    }
  }
  return row;
}

void Print(const std::string& name, const char* camera, const Row& row) {
  std::printf("| %-22s | %-6s | %6d | %5d | %5d | %5d | %5d |\n", name.c_str(), camera, row.placed,
              row.wrong, row.wrongDoubted, row.right, row.rightDoubted);
}

class Table {
 public:
  explicit Table(const std::string& folder) : m_folder(folder) {
    std::printf("| %-22s | camera | placed | wrong | told  | right | told  |\n", "scene");
    std::printf("|---|---|---|---|---|---|---|\n");
  }

  /// Passes of both kinds over each of the scenes, which belong together.
  void Add(const std::string& name, bool repeats, const std::vector<cv::Mat>& scenes,
           cv::Size frame, int seed, bool quick) {
    using jqbench::Dirt;
    for (const Dirt dirt : {Dirt::kClean, Dirt::kDirty, Dirt::kFilthy}) {
      if (quick && dirt == Dirt::kDirty) continue;
      Row row;
      for (std::size_t i = 0; i < scenes.size(); ++i) {
        for (const auto motion : {jqbench::Motion::kSteady, jqbench::Motion::kAnywhere}) {
          const std::uint64_t passSeed = static_cast<std::uint64_t>(seed) * 1000 + i * 10 +
                                         static_cast<std::uint64_t>(dirt) * 3 +
                                         static_cast<std::uint64_t>(motion);
          row += JudgePass(TakePass(scenes[i], frame, kFrames, motion, dirt, passSeed), m_folder,
                           m_timing);
        }
      }
      const char* camera = dirt == Dirt::kClean   ? "clean"
                           : dirt == Dirt::kDirty ? "dirty"
                                                  : "filthy";
      Print(name + (repeats ? " *" : ""), camera, row);
      (repeats ? m_repeating : m_plain) += row;
    }
  }

  bool Finish() const {
    Print("all that do not repeat", "all", m_plain);
    Print("all that repeat *", "all", m_repeating);
    std::printf("\n%.2f ms of processor time a placement (%d)\n",
                1e3 * m_timing.seconds / std::max(1, m_timing.judged), m_timing.judged);
    return m_plain.wrong == m_plain.wrongDoubted && m_repeating.wrong == m_repeating.wrongDoubted;
  }

 private:
  std::string m_folder;
  Timing m_timing;
  Row m_plain, m_repeating;
};

void AddScenes(const Options& options, cv::Size frame, Table& table) {
  const auto scenes =
      options.set == "development" ? jqbench::DevelopmentScenes() : jqbench::EvaluationScenes();
  for (const jqbench::DoubtScene& scene : scenes) {
    std::vector<cv::Mat> painted;
    for (int i = 0; i < options.seeds; ++i) {
      const int seed = options.firstSeed + i;
      painted.push_back(scene.paint(frame * 4, static_cast<std::uint64_t>(seed)));
    }
    table.Add(scene.name, scene.repeats, painted, frame, options.firstSeed, options.quick);
  }
}

// Passes of other seeds over one picture.
void AddPicture(const Options& options, const std::string& path, cv::Size frame, Table& table) {
  const cv::Mat picture = cv::imread(path, cv::IMREAD_COLOR);
  if (picture.cols < 2 * frame.width || picture.rows < 2 * frame.height) {
    std::printf("%s: unreadable or too small\n", path.c_str());
    return;
  }
  table.Add(std::filesystem::path(path).filename().string(), false,
            std::vector<cv::Mat>(static_cast<std::size_t>(options.seeds), picture), frame,
            options.firstSeed, options.quick);
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  std::string size = "400x300";
  CLI::App app("How well doubtful placements are told");
  app.add_option("--set", options.set, "scenes")
      ->check(CLI::IsMember({"development", "evaluation"}))
      ->capture_default_str();
  app.add_option("--seeds", options.seeds, "scenes of each kind")->capture_default_str();
  app.add_option("--first-seed", options.firstSeed)->capture_default_str();
  app.add_option("--size", size, "of a frame")->capture_default_str();
  app.add_option("pictures", options.pictures, "pass over these instead");
  app.add_flag("--quick", options.quick, "one scene of each kind, clean and filthy");
  CLI11_PARSE(app, argc, argv);
  if (options.quick) options.seeds = 1;
  cv::Size frame;
  if (std::sscanf(size.c_str(), "%dx%d", &frame.width, &frame.height) != 2) return 2;

  std::string pattern = (std::filesystem::temp_directory_path() / "jqbench_doubt_XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) return 2;
  Table table(pattern);
  if (options.pictures.empty()) AddScenes(options, frame, table);
  for (const std::string& path : options.pictures) AddPicture(options, path, frame, table);
  const bool allTold = table.Finish();
  std::filesystem::remove_all(pattern);
  return allTold ? 0 : 1;
}
