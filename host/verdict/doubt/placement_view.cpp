#include "host/verdict/doubt/placement_view.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>

namespace jqhost {
namespace {

constexpr int kLongestSide = 192;
constexpr int kLeastFactor = 4;
constexpr int kLeastViewSide = 16;
constexpr int kSurround = 27;

// The transform is at its best at lengths of small factors, half as fast at those with
// few twos among them (270 against 288).
int FastLength(int least) {
  int length = cv::getOptimalDFTSize(least);
  while (length % 8 != 0) length = cv::getOptimalDFTSize(length + 1);
  return length;
}

// Padded to twice the size, every shift has a place of its own in the product of two
// spectra.
cv::Mat Spectrum(const cv::Mat& samples) {
  const cv::Size padded(FastLength(2 * samples.cols), FastLength(2 * samples.rows));
  cv::Mat field = cv::Mat::zeros(padded, CV_32FC1);
  samples.copyTo(field(cv::Rect(cv::Point(), samples.size())));
  cv::dft(field, field, 0, samples.rows);
  return field;
}

}  // namespace

int ViewFactor(cv::Size frame) {
  const int side = std::max(frame.width, frame.height);
  return std::max(kLeastFactor, (side + kLongestSide - 1) / kLongestSide);
}

ReducedFrame ReduceFrame(const cv::Mat& frame) {
  ReducedFrame reduced;
  reduced.factor = ViewFactor(frame.size());
  const cv::Size small(frame.cols / reduced.factor, frame.rows / reduced.factor);
  if (small.empty()) return reduced;
  cv::resize(frame(cv::Rect(cv::Point(), small * reduced.factor)), reduced.grey, small, 0, 0,
             cv::INTER_AREA);
  if (const int channels = frame.channels(); channels > 1) {
    cv::cvtColor(reduced.grey, reduced.grey,
                 channels == 3 ? cv::COLOR_RGB2GRAY : cv::COLOR_RGBA2GRAY);
  }
  return reduced;
}

PlacementView MakePlacementView(const ReducedFrame& frame) {
  PlacementView view;
  view.factor = frame.factor;
  const cv::Size size = frame.grey.size();
  if (std::min(size.width, size.height) < kLeastViewSide) return view;

  frame.grey.convertTo(view.samples, CV_32F);
  cv::Mat surround;
  cv::blur(view.samples, surround, cv::Size(kSurround, kSurround), cv::Point(-1, -1),
           cv::BORDER_REFLECT_101);
  view.samples -= surround;

  cv::integral(view.samples, view.sums, view.squares, CV_64F, CV_64F);
  view.energy = view.squares.at<double>(size.height, size.width) / size.area();
  view.spectrum = Spectrum(view.samples);
  return view;
}

}  // namespace jqhost
