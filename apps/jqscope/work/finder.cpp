#include "work/finder.h"

#include <utility>

#include "jqstitchingalgorithm.h"
#include "work/likeness.h"

namespace jqscope {
namespace {

// Twice what a placement needs: wrong places were seen with 11 matches by chance.
constexpr int kClearlyEnough = 22;
constexpr double kFoundLikeness = 0.6;
constexpr int kThinnestFound = 20;

}  // namespace

std::optional<cv::Point> FindPlace(const cv::Mat& frame, const std::vector<KnownPlace>& places,
                                   const jqhost::StitchSettings& settings) {
  JQStitchingAlgorithm engine;
  engine.SetParameter(settings.detectLevel, settings.cornerBudget, settings.overlapMode,
                      settings.usePresets ? 1 : 0);
  for (const KnownPlace& known : places) {
    int x = 0, y = 0, matches = 0;
    engine.ImageMosaicFun(known.block.clone(), frame.clone(), x, y, matches);
    const bool clear = matches >= kClearlyEnough;
    if (clear && Likeness(known.block, frame, cv::Point(x, y), kThinnestFound) >= kFoundLikeness) {
      return known.place;
    }
  }
  return std::nullopt;
}

Finder::~Finder() {
  if (m_thread.joinable()) m_thread.join();
}

void Finder::Search(cv::Mat frame, std::vector<KnownPlace> places,
                    const jqhost::StitchSettings& settings, Found found) {
  if (m_busy.exchange(true)) return;
  if (m_thread.joinable()) m_thread.join();  // it has ended
  m_thread = std::thread([this, frame = std::move(frame), places = std::move(places), settings,
                          found = std::move(found)] {
    std::optional<cv::Point> place;
    try {
      place = FindPlace(frame, places, settings);
    } catch (const std::exception&) {
      place.reset();  // no memory for a search: the person can still move back
    }
    found(place);
    m_busy = false;
  });
}

}  // namespace jqscope
