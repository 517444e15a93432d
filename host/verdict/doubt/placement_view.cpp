#include "host/verdict/doubt/placement_view.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>

namespace jqhost {
namespace {

constexpr int kLongestSide = 200;
constexpr int kLeastViewSide = 16;
constexpr int kSurround = 27;

// Padded to twice the size, every shift has a place of its own in the product of two
// spectra.
cv::Mat Spectrum(const cv::Mat& samples) {
  const cv::Size padded(cv::getOptimalDFTSize(2 * samples.cols),
                        cv::getOptimalDFTSize(2 * samples.rows));
  cv::Mat field = cv::Mat::zeros(padded, CV_32FC1);
  samples.copyTo(field(cv::Rect(cv::Point(), samples.size())));
  cv::dft(field, field, 0, samples.rows);
  return field;
}

}  // namespace

int ViewFactor(cv::Size frame) {
  const int side = std::max(frame.width, frame.height);
  return std::max(2, (side + kLongestSide - 1) / kLongestSide);
}

PlacementView MakePlacementView(const cv::Mat& frame) {
  PlacementView view;
  view.factor = ViewFactor(frame.size());
  const cv::Size small(frame.cols / view.factor, frame.rows / view.factor);
  if (std::min(small.width, small.height) < kLeastViewSide) return view;

  cv::Mat reduced, surround;
  cv::resize(frame(cv::Rect(cv::Point(), small * view.factor)), reduced, small, 0, 0,
             cv::INTER_AREA);
  if (reduced.channels() == 3) cv::cvtColor(reduced, reduced, cv::COLOR_RGB2GRAY);
  reduced.convertTo(view.samples, CV_32F);
  cv::blur(view.samples, surround, cv::Size(kSurround, kSurround), cv::Point(-1, -1),
           cv::BORDER_REFLECT_101);
  view.samples -= surround;

  cv::integral(view.samples, view.sums, view.squares, CV_64F, CV_64F);
  view.energy = view.squares.at<double>(small.height, small.width) / small.area();
  view.spectrum = Spectrum(view.samples);
  return view;
}

}  // namespace jqhost
