#ifndef JQHOST_FLAT_FLAT_FIELD_H
#define JQHOST_FLAT_FLAT_FIELD_H

#include <opencv2/core.hpp>
#include <string>

namespace jqhost {

/// Takes uneven light and the sensor's own signal out of frames:
///
///     out = (in - dark) * mean(flat - dark) / (flat - dark)
///
/// per channel, in single precision, rounded half up and cut to the depth of the
/// samples. `flat` is what the camera shows of an empty field, `dark` what it
/// shows without light. Where the flat field is nearly black (below 1/50 of its
/// mean) nothing is known about the light, and only the dark frame is taken off.
///
/// Both have the samples of the frames: 8 bits for 8-bit frames, the same
/// significant bits for 16-bit ones. A 16-bit field for 8-bit frames is taken as
/// 256 times finer.
class FlatField {
 public:
  /// Reads the pictures; an empty path means there is none (not both). Raises
  /// `InputError` when one cannot be read or they do not fit each other.
  FlatField(const std::string& flatPath, const std::string& darkPath);

  cv::Size Size() const { return m_size; }
  /// Corrects a picture of this size, `CV_8U` or `CV_16U` of `bits` bits.
  cv::Mat Correct(const cv::Mat& picture, int bits);
  /// Pixels where the flat field was too dark; known after the first correction.
  int UnknownPixels() const { return m_unknownPixels; }

 private:
  void Fit(int type, int bits);

  cv::Mat m_flatFile, m_darkFile;
  cv::Size m_size;
  cv::Mat m_dark, m_gain;  // `CV_32F`, fitted to frames of the type and depth below
  int m_type = -1, m_bits = 0;
  int m_unknownPixels = 0;
};

}  // namespace jqhost

#endif  // JQHOST_FLAT_FLAT_FIELD_H
