#ifndef JQHOST_FLAT_FLAT_ESTIMATE_H
#define JQHOST_FLAT_FLAT_ESTIMATE_H

#include <opencv2/core.hpp>
#include <string>
#include <vector>

namespace jqhost {

/// Estimates the flat field from frames of many different places: what they have in
/// common is the light, not the specimen.
///
/// Every frame, less the dark frame, is averaged over a coarse grid of cells and
/// divided by its own mean, per channel, so that bright and dark places count the
/// same. Each cell then takes the mean of the middle half of its values, which a
/// few odd ones do not move. A parabolic surface (all terms in x and y up to the second
/// power, least squares) is fitted, and what it leaves, smoothed with a wide Gaussian,
/// is added: a Gaussian alone would be too bright in the corners, where it sees only
/// the inner side.
class FlatEstimate {
 public:
  /// @param dark as in `FlatField`; may be empty
  explicit FlatEstimate(cv::Mat dark) : m_dark(std::move(dark)) {}

  /// Takes a frame, `CV_8U` or `CV_16U` of one or three channels. All must be alike.
  /// @return why it cannot be taken; empty when it was
  std::string Add(const cv::Mat& frame);

  int Count() const { return static_cast<int>(m_means.size()); }
  /// The flat field, `CV_16U`, in the unit of the frames (256 times finer for 8-bit
  /// frames), the dark frame included, as a camera would take it.
  cv::Mat Result() const;

 private:
  cv::Mat ChannelResult(int channel) const;

  cv::Mat m_dark;
  cv::Mat m_fitted;  // the dark frame as `CV_32F`, fit for the frames
  int m_type = -1;
  cv::Size m_size, m_grid;
  std::vector<cv::Mat> m_cells;     // per frame: `CV_64F` in the grid, mean 1
  std::vector<cv::Scalar> m_means;  // per frame
};

}  // namespace jqhost

#endif  // JQHOST_FLAT_FLAT_ESTIMATE_H
