// What scripts/measure_assemble.py measures with: frames whose places are known, and other
// ways to place them.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <map>
#include <opencv2/imgcodecs.hpp>

#include "host/assembly/made_pass.h"
#include "host/assembly/scan_stitcher.h"
#include "host/assembly/sift_places.h"
#include "host/doubt_scenes.h"
#include "host/simulate/slide.h"

namespace {

using jqbench::PaintScene;
using Places = std::vector<std::optional<cv::Point2d>>;

std::map<std::string, PaintScene> Scenes() {
  std::map<std::string, PaintScene> scenes{{"slide", jqhost::PaintSlide}};
  for (const jqbench::DoubtScene& scene : jqbench::DevelopmentScenes())
    scenes[scene.name] = scene.paint;
  for (const jqbench::DoubtScene& scene : jqbench::EvaluationScenes())
    scenes[scene.name] = scene.paint;
  return scenes;
}

struct PassOptions {
  jqbench::PassSettings settings;
  std::string scene, other = "slide", picture, folder, size = "640x480";
  bool inOrder = false;
};

void AddPass(CLI::App& program, PassOptions& o) {
  CLI::App* pass = program.add_subcommand("pass", "Write frames of a scene, and where they lie");
  pass->add_option("--scene", o.scene, "painted scene");
  pass->add_option("--picture", o.picture, "picture instead of a painted scene");
  pass->add_option("--other", o.other, "scene of the foreign frames")->capture_default_str();
  pass->add_option("-o", o.folder, "folder, which is there")->required();
  pass->add_option("--size", o.size)->capture_default_str();
  pass->add_option("-n", o.settings.count)->capture_default_str();
  pass->add_option("--columns", o.settings.columns)->capture_default_str();
  pass->add_option("--overlap", o.settings.overlap)->capture_default_str();
  pass->add_option("--jitter", o.settings.jitter)->capture_default_str();
  pass->add_option("--bad", o.settings.badShare)->capture_default_str();
  pass->add_option("--noise", o.settings.effects.noise)->capture_default_str();
  pass->add_option("--vignetting", o.settings.effects.vignetting)->capture_default_str();
  pass->add_option("--exposure", o.settings.effects.exposure)->capture_default_str();
  pass->add_option("--blur", o.settings.effects.blur)->capture_default_str();
  pass->add_option("--seed", o.settings.seed)->capture_default_str();
  pass->add_flag("--in-order", o.inOrder, "line by line, there and back");
  pass->callback([&o] {
    const std::map<std::string, PaintScene> scenes = Scenes();
    cv::Size& frame = o.settings.frame;
    if (std::sscanf(o.size.c_str(), "%dx%d", &frame.width, &frame.height) != 2)
      throw CLI::ValidationError("--size", "'" + o.size + "' is no size");
    o.settings.shuffled = !o.inOrder;
    const PaintScene& other = scenes.at(o.other);
    if (o.picture.empty()) {
      WritePass(MakePass(scenes.at(o.scene), other, o.settings), o.folder);
    } else {
      const cv::Mat picture = cv::imread(o.picture, cv::IMREAD_COLOR);
      WritePass(MakePass(picture, other, o.settings), o.folder);
    }
  });
}

void AddWay(CLI::App& program, const char* name, const char* help, std::vector<std::string>& files,
            Places (*place)(const std::vector<cv::Mat>&)) {
  CLI::App* way = program.add_subcommand(name, help);
  way->add_option("files", files)->required();
  way->callback([&files, place] {
    std::vector<cv::Mat> frames;
    for (const std::string& file : files) {
      frames.push_back(cv::imread(file, cv::IMREAD_COLOR));
      if (frames.back().empty()) throw std::runtime_error("cannot read " + file);
    }
    const Places places = place(frames);
    for (std::size_t i = 0; i < places.size(); ++i) {
      if (places[i]) std::printf("%s,%.3f,%.3f\n", files[i].c_str(), places[i]->x, places[i]->y);
    }
  });
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App program("Frames whose places are known, and other ways to place them");
  program.require_subcommand(1);
  PassOptions pass;
  std::vector<std::string> files;
  AddPass(program, pass);
  AddWay(program, "scans", "Place files with the image library's scan stitcher", files,
         jqbench::PlaceByScanStitcher);
  AddWay(program, "sift", "Place files by SIFT pairs and the graph of jqstitch assemble", files,
         jqbench::PlaceBySift);
  try {
    CLI11_PARSE(program, argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
