#include "report/stage_section.h"

#include <array>
#include <functional>
#include <vector>

#include "jqimageconvert.h"
#include "jqstitchingalgorithm.h"
#include "reference/algorithm.h"
#include "reference/stitcher.h"
#include "report/statistics.h"
#include "report/stopwatch.h"
#include "support/frames.h"
#include "support/host_record.h"
#include "support/old_block.h"

namespace jqbench {
namespace {

constexpr int kRepeats = 9;

/// What a stage has to move and to compute at least, per frame pixel or in all.
struct Floor {
  double bytes;
  double operations;
};

struct Stage {
  const char* name;
  Floor floor;
  std::function<void(int)> library, plain;  // the argument counts the calls
};

/// Pictures and lists that the stages work on, and one engine's results.
template <class Engine>
struct Bench {
  Engine engine;
  std::array<cv::Mat, 2> colour, grey;
  cv::Mat old, frame, matrix, weight, fused;
  std::array<std::vector<cv::Point>, 2> corners;
  std::array<cv::Mat, 2> descriptors;
  std::vector<cv::Point> pairs, matchedFirst, matchedSecond;
  int flag = 0;

  explicit Bench(const FramePair& frames)
      : colour{frames.first, frames.second},
        grey{frames.greyFirst, frames.greySecond},
        old(OldBlock(frames.first)),
        frame(frames.second.clone()) {
    engine.SetParameter(1, 8, 0, 1);
    engine.m_fBrightThreshold = engine.m_fBrightPreset;
    engine.m_fDefinitionThreshold = engine.m_fDefinitionPreset;
    for (size_t i = 0; i < 2; ++i) {
      engine.FindHarrisCornerCoordianteFun(grey[i], corners[i]);
      engine.NoRotaFeatureDescriber(grey[i], corners[i], descriptors[i]);
    }
    engine.CalacDistanceIndexFun(descriptors[0], descriptors[1], pairs);
    engine.RoughMatchPoint(corners[0], corners[1], pairs, matchedFirst, matchedSecond);
  }

  void zeroSamples(int) { engine.JudgeImageChannel(frame, frame); }
  void overlap(int) {
    engine.CalacOverLapImageFlages(0, 0, old.rows, old.cols, colour[0], colour[1], flag);
  }
  void motion(int) { flag = engine.ImageMotionModel(colour[0], colour[1]); }
  // Two pictures by turns, so that nothing remembered helps.
  void findCorners(int call) {
    std::vector<cv::Point> found;
    engine.FindHarrisCornerCoordianteFun(grey[static_cast<size_t>(call % 2)], found);
  }
  void describe(int) {
    cv::Mat out;
    engine.NoRotaFeatureDescriber(grey[0], corners[0], out);
  }
  void match(int) {
    std::vector<cv::Point> found;
    engine.CalacDistanceIndexFun(descriptors[0], descriptors[1], found);
  }
  void agree(int) {
    std::vector<cv::Point> first, second;
    float x = 0, y = 0;
    engine.RansacMatchPointArrayFun(matchedFirst, matchedSecond, first, second, x, y);
  }
  void weigh(int) { engine.WeightofTwoAreaFun(old, colour[1], weight); }
  void fuse(int) { engine.TwoImageFusion(old, frame, fused); }
};

void Convert(_tagJQIMG& record, Bench<JQStitchingAlgorithm>& bench) {
  ConvertJQImgToCv8UC3(&record, bench.matrix);
}

void Convert(_tagJQIMG& record, Bench<reference::Algorithm>& bench) {
  reference::ConvertJQImgToCv8UC3(&record, bench.matrix);
}

// Gigabytes a second, read and written together.
double CopySpeed(const cv::Mat& picture) {
  cv::Mat to(picture.size(), picture.type());
  std::vector<double> times;
  for (int i = 0; i < kRepeats; ++i) {
    times.push_back(Milliseconds([&] { picture.copyTo(to); }));
  }
  return 2.0 * static_cast<double>(picture.total() * picture.elemSize()) / Median(times) / 1e6;
}

template <class A, class B>
std::vector<Stage> Stages(_tagJQIMG& record, A& library, B& plain, cv::Size size) {
  const double n = size.area();
  const auto cornerCount = static_cast<double>(library.corners[0].size());
  const double descriptorPairs =
      static_cast<double>(library.descriptors[0].rows) * library.descriptors[1].rows;
  const double matchPairs =
      static_cast<double>(library.matchedFirst.size() * library.matchedFirst.size());
  const auto stage = [&](const char* name, Floor floor, auto run) {
    return Stage{name, floor, [&library, run](int call) { run(library, call); },
                 [&plain, run](int call) { run(plain, call); }};
  };
  // Operations per frame pixel: grey 5 a colour pixel; per pixel of a halved
  // picture 4 for halving, 20 for the blur, 18 for the second difference; corners
  // 12 for gradients, 3 products, 3 maps of 18 taps, 6 response, 9 comparisons;
  // weights 16 a map for two passes and 3 for the share; 5 a fused sample.
  return {
      stage("record to matrix", {6 * n, 0}, [&record](auto& b, int) { Convert(record, b); }),
      stage("zero samples", {6 * n, 3 * n}, [](auto& b, int i) { b.zeroSamples(i); }),
      stage("overlap quality", {6 * n, 32 * n}, [](auto& b, int i) { b.overlap(i); }),
      stage("motion", {6 * n, 53 * n}, [](auto& b, int i) { b.motion(i); }),
      stage("corners of a frame", {n, 35.5 * n}, [](auto& b, int i) { b.findCorners(i); }),
      stage("descriptors of a frame", {cornerCount * (576 + 400), cornerCount * 400 * 10},
            [](auto& b, int i) { b.describe(i); }),
      stage("matching", {2 * cornerCount * 400, descriptorPairs * 200 * 3},
            [](auto& b, int i) { b.match(i); }),
      stage("consensus", {16 * cornerCount, matchPairs * 5}, [](auto& b, int i) { b.agree(i); }),
      stage("weights", {7 * n, 45 * n}, [](auto& b, int i) { b.weigh(i); }),
      stage("weights and fused pixels", {9 * n, 60 * n}, [](auto& b, int i) { b.fuse(i); })};
}

}  // namespace

std::string StageTable(cv::Size size) {
  const FramePair frames(size);
  const cv::Mat hostPixels = frames.first.clone();
  _tagJQIMG record = HostRecord(hostPixels);
  Bench<JQStitchingAlgorithm> library(frames);
  Bench<reference::Algorithm> plain(frames);
  const double speed = CopySpeed(frames.first);

  std::string text = cv::format(
      "Frames of %dx%d; a copy moves %.1f GB/s here.\n\n"
      "| stage | MB | ms to move them | Mop | library ms | times the move | Gop/s | plain ms | "
      "ratio |\n|---|---:|---:|---:|---:|---:|---:|---:|---:|\n",
      size.width, size.height, speed);
  for (const Stage& stage : Stages(record, library, plain, size)) {
    std::vector<double> libraryMs, plainMs;
    for (int i = 0; i < kRepeats; ++i) {
      libraryMs.push_back(Milliseconds([&] { stage.library(i); }));
      plainMs.push_back(Milliseconds([&] { stage.plain(i); }));
    }
    const double ms = Median(libraryMs), move = stage.floor.bytes / speed / 1e6;
    text +=
        cv::format("| %s | %.1f | %.2f | %.1f | %.2f | %.1f | %.1f | %.1f | %.1f |\n", stage.name,
                   stage.floor.bytes / 1e6, move, stage.floor.operations / 1e6, ms, ms / move,
                   stage.floor.operations / ms / 1e6, Median(plainMs), Median(plainMs) / ms);
  }
  return text;
}

}  // namespace jqbench
