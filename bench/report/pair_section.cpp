#include "report/pair_section.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

#include "jqstitchingalgorithm.h"
#include "reference/algorithm.h"
#include "report/other_ways.h"
#include "report/statistics.h"
#include "report/stopwatch.h"
#include "support/scene.h"

namespace jqbench {
namespace {

constexpr std::uint64_t kSeed = 20240503;

struct Pair {
  cv::Mat first, second;
  cv::Point shift;
};

struct Way {
  const char* name;
  std::function<std::optional<cv::Point2d>(const cv::Mat&, const cv::Mat&)> find;
};

// Every pair is new to the engine, so nothing remembered helps it.
template <class Engine>
std::optional<cv::Point2d> ByEngine(Engine& engine, const cv::Mat& first, const cv::Mat& second) {
  int x = 0, y = 0, support = 0;
  engine.ImageMosaicFun(first, second, x, y, support);
  if (support < 11) return std::nullopt;
  return cv::Point2d(x, y);
}

std::vector<Pair> MakePairs(cv::Size frame) {
  static const double kShares[][2] = {{0.12, 0.03},  {-0.25, 0.08}, {0.05, -0.18},
                                      {0.40, -0.10}, {0.02, 0.50},  {-0.60, -0.05}};
  const Scene scene(Subject::kTissue, frame, kSeed);
  std::vector<Pair> pairs;
  int index = 0;
  for (const auto& share : kShares) {
    const cv::Point shift(static_cast<int>(share[0] * frame.width),
                          static_cast<int>(share[1] * frame.height));
    const cv::Point at(index * frame.width / 5, index * frame.height / 7);
    pairs.push_back({scene.frame(2 * index, at), scene.frame(2 * index + 1, at + shift), shift});
    ++index;
  }
  return pairs;
}

}  // namespace

std::string PairHeader() {
  return "| way | frame | pairs found | median ms | median error px | largest error px |\n"
         "|---|---|---:|---:|---:|---:|\n";
}

std::string PairRows(cv::Size frame, bool& equal) {
  const std::vector<Pair> pairs = MakePairs(frame);
  JQStitchingAlgorithm library;
  reference::Algorithm plain;
  library.SetParameter(1, 8, 0, 1);
  plain.SetParameter(1, 8, 0, 1);
  const std::vector<Way> ways = {
      {"library", [&](const cv::Mat& a, const cv::Mat& b) { return ByEngine(library, a, b); }},
      {"plain twin", [&](const cv::Mat& a, const cv::Mat& b) { return ByEngine(plain, a, b); }},
      {"phase correlation", ByPhaseCorrelation},
      {"ORB and RANSAC", ByOrb},
      {"scan stitcher, whole", ByScanStitcher}};

  std::vector<std::vector<double>> times(ways.size()), errors(ways.size());
  for (const Pair& pair : pairs) {
    std::vector<std::optional<cv::Point2d>> found(ways.size());
    for (size_t w = 0; w < ways.size(); ++w) {
      times[w].push_back(Milliseconds([&] { found[w] = ways[w].find(pair.first, pair.second); }));
      if (!found[w]) continue;
      const cv::Point2d miss = *found[w] - cv::Point2d(pair.shift);
      errors[w].push_back(std::max(std::abs(miss.x), std::abs(miss.y)));
    }
    equal = equal && found[0] == found[1];
  }

  std::string rows;
  for (size_t w = 0; w < ways.size(); ++w) {
    rows += cv::format("| %s | %dx%d | %zu of %zu | %.1f | %.2f | %.2f |\n", ways[w].name,
                       frame.width, frame.height, errors[w].size(), pairs.size(), Median(times[w]),
                       Median(errors[w]), Percentile(errors[w], 1.0));
  }
  return rows;
}

}  // namespace jqbench
