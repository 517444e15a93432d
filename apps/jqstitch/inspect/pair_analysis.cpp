#include "inspect/pair_analysis.h"

#include <cmath>
#include <cstdio>
#include <opencv2/imgproc.hpp>

#include "inspect/pair_verdict.h"
#include "jqstitchingalgorithm.h"

namespace jqstitch {
namespace {

// The frame that the engine registers: zero samples lifted, then divided by the
// detection level.
cv::Mat Prepare(JQStitchingAlgorithm& engine, const cv::Mat& frame, int level) {
  cv::Mat own = frame.clone();
  engine.JudgeImageChannel(own, own);
  if (level != 1) {
    cv::resize(own, own, cv::Size(own.cols / level, own.rows / level), 0, 0, cv::INTER_LINEAR);
  }
  return own;
}

void FindMatches(JQStitchingAlgorithm& engine, PairAnalysis& pair) {
  cv::Mat greyFirst;
  cv::Mat greySecond;
  // The engine's grey conversion, which takes the frames' order for red-green-blue.
  cv::cvtColor(pair.first, greyFirst, cv::COLOR_RGB2GRAY);
  cv::cvtColor(pair.second, greySecond, cv::COLOR_RGB2GRAY);
  engine.FindHarrisCornerCoordianteFun(greyFirst, pair.cornersFirst);
  engine.FindHarrisCornerCoordianteFun(greySecond, pair.cornersSecond);
  if (pair.cornersFirst.empty() || pair.cornersSecond.empty()) return;

  cv::Mat descriptorsFirst;
  cv::Mat descriptorsSecond;
  engine.NoRotaFeatureDescriber(greyFirst, pair.cornersFirst, descriptorsFirst);
  engine.NoRotaFeatureDescriber(greySecond, pair.cornersSecond, descriptorsSecond);
  std::vector<cv::Point> indices;
  engine.CalacDistanceIndexFun(descriptorsFirst, descriptorsSecond, indices);
  engine.RoughMatchPoint(pair.cornersFirst, pair.cornersSecond, indices, pair.matchedFirst,
                         pair.matchedSecond);

  std::vector<cv::Point> inliersFirst;
  std::vector<cv::Point> inliersSecond;
  float tx = 0;
  float ty = 0;
  engine.RansacMatchPointArrayFun(pair.matchedFirst, pair.matchedSecond, inliersFirst,
                                  inliersSecond, tx, ty);
  pair.offset = cv::Point(static_cast<int>(tx), static_cast<int>(ty));
  pair.support = static_cast<int>(inliersFirst.size());
  // The inliers are a part of the matches in the same order.
  pair.inlier.assign(pair.matchedFirst.size(), false);
  std::size_t next = 0;
  for (std::size_t k = 0; k < pair.matchedFirst.size() && next < inliersFirst.size(); ++k) {
    if (pair.matchedFirst[k] == inliersFirst[next] &&
        pair.matchedSecond[k] == inliersSecond[next]) {
      pair.inlier[k] = true;
      ++next;
    }
  }
}

// What the overlap test of the second call measures: B where A lies, before the
// shift is known.
void MeasureOverlap(JQStitchingAlgorithm& engine, PairAnalysis& pair) {
  char words[160];
  if (engine.m_nOverlapMode != 0) {
    std::snprintf(words, sizeof(words), "Motion test: %d grey levels of change (limit %d)",
                  engine.ImageMotionModel(pair.first, pair.second), engine.m_nFlagPreset);
  } else {
    float bright = 0;
    float definition = 0;
    engine.CalacOverLapImageBright(pair.first, pair.second, bright);
    engine.CalacOverLapImageDefinition(pair.first, pair.second, definition);
    char sharpness[64] = "sharpness cannot be compared on so flat a picture";
    if (!std::isnan(definition)) {
      std::snprintf(sharpness, sizeof(sharpness), "sharpness by %.1f (limit %.0f)",
                    static_cast<double>(definition),
                    static_cast<double>(engine.m_fDefinitionPreset));
    }
    std::snprintf(words, sizeof(words), "Overlap test: brightness differs by %.1f (limit %.0f), %s",
                  static_cast<double>(bright), static_cast<double>(engine.m_fBrightPreset),
                  sharpness);
  }
  pair.overlapWords = words;
}

void Fuse(JQStitchingAlgorithm& engine, PairAnalysis& pair) {
  const cv::Rect whole(cv::Point(), pair.first.size());
  const cv::Rect moved = whole + pair.offset;
  if (pair.support == 0 || (whole & moved).empty()) return;
  const cv::Rect bounds = whole | moved;
  pair.placeFirst = whole.tl() - bounds.tl();
  pair.placeSecond = moved.tl() - bounds.tl();
  pair.fused = cv::Mat::zeros(bounds.size(), pair.first.type());
  pair.first.copyTo(pair.fused(cv::Rect(pair.placeFirst, whole.size())));
  cv::Mat block = pair.fused(cv::Rect(pair.placeSecond, whole.size()));
  engine.WeightofTwoAreaFun(block.clone(), pair.second.clone(), pair.weight);
  cv::Mat fused;
  engine.TwoImageFusion(block.clone(), pair.second.clone(), fused);
  fused.copyTo(block);
}

}  // namespace

PairAnalysis AnalysePair(const cv::Mat& first, const cv::Mat& second,
                         const jqhost::StitchSettings& settings) {
  JQStitchingAlgorithm engine;
  engine.SetParameter(settings.detectLevel, settings.cornerBudget, settings.overlapMode, 1);
  PairAnalysis pair;
  pair.first = Prepare(engine, first, settings.detectLevel);
  pair.second = Prepare(engine, second, settings.detectLevel);
  FindMatches(engine, pair);
  Fuse(engine, pair);
  MeasureOverlap(engine, pair);
  DecideVerdict(first, second, settings, pair);
  return pair;
}

}  // namespace jqstitch
