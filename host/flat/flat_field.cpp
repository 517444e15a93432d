#include "host/flat/flat_field.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "host/flat/sample_unit.h"
#include "host/input_error.h"
#include "host/size_text.h"
#include "host/source/picture_pages.h"

namespace jqhost {
namespace {

constexpr double kLeastLight = 0.02;  // of the mean

cv::Mat ReadField(const std::string& path, const char* what) {
  if (path.empty()) return cv::Mat();
  std::string why;
  cv::Mat field = ReadStored({path, 0}, why);
  if (!why.empty()) {
    throw InputError(std::string("cannot read the ") + what + " '" + path + "': " + why);
  }
  return field;
}

std::array<double, 3> MeanLight(const cv::Mat& flat, const cv::Mat& dark) {
  const int channels = flat.channels();
  std::array<double, 3> sum{};
  for (int r = 0; r < flat.rows; ++r) {
    const float* light = flat.ptr<float>(r);
    const float* none = dark.ptr<float>(r);
    for (int i = 0; i < flat.cols * channels; ++i) {
      sum[i % channels] += static_cast<double>(light[i]) - static_cast<double>(none[i]);
    }
  }
  for (double& value : sum) value /= static_cast<double>(flat.total());
  return sum;
}

template <typename Sample>
void CorrectRow(const Sample* in, const float* dark, const float* gain, int samples, float limit,
                Sample* out) {
  for (int i = 0; i < samples; ++i) {
    const float value = (static_cast<float>(in[i]) - dark[i]) * gain[i] + 0.5F;
    out[i] = static_cast<Sample>(std::clamp(value, 0.0F, limit));
  }
}

}  // namespace

FlatField::FlatField(const std::string& flatPath, const std::string& darkPath)
    : m_flatFile(ReadField(flatPath, "flat field")), m_darkFile(ReadField(darkPath, "dark frame")) {
  m_size = m_flatFile.empty() ? m_darkFile.size() : m_flatFile.size();
  if (!m_darkFile.empty() && m_darkFile.size() != m_size) {
    throw InputError("the sizes differ: the flat field '" + flatPath + "' has " + SizeText(m_size) +
                     " pixels, the dark frame '" + darkPath + "' " + SizeText(m_darkFile.size()));
  }
  if (m_flatFile.empty()) return;
  // In any unit, since light is more than no light in all of them.
  const cv::Mat flat = InUnitOfFrames(m_flatFile, CV_16U, 16, 1);
  const cv::Mat dark = m_darkFile.empty() ? cv::Mat::zeros(flat.size(), flat.type())
                                          : InUnitOfFrames(m_darkFile, CV_16U, 16, 1);
  if (MeanLight(flat, dark)[0] <= 0) {
    throw InputError("the flat field '" + flatPath + "' is " +
                     (m_darkFile.empty() ? std::string("black")
                                         : "no brighter than the dark frame '" + darkPath + "'"));
  }
}

void FlatField::Fit(int type, int bits) {
  m_type = type;
  m_bits = bits;
  const int depth = CV_MAT_DEPTH(type), channels = CV_MAT_CN(type);
  m_dark = m_darkFile.empty() ? cv::Mat::zeros(m_size, CV_32FC(channels))
                              : InUnitOfFrames(m_darkFile, depth, bits, channels);
  m_gain = cv::Mat(m_size, CV_32FC(channels), cv::Scalar::all(1));
  m_unknownPixels = 0;
  if (m_flatFile.empty()) return;
  const cv::Mat flat = InUnitOfFrames(m_flatFile, depth, bits, channels);
  const std::array<double, 3> mean = MeanLight(flat, m_dark);
  for (int r = 0; r < m_size.height; ++r) {
    for (int c = 0; c < m_size.width; ++c) {
      bool known = true;
      for (int k = 0; k < channels; ++k) {
        const int i = c * channels + k;
        const double light = static_cast<double>(flat.ptr<float>(r)[i]) -
                             static_cast<double>(m_dark.ptr<float>(r)[i]);
        const bool lit = light > 0 && light >= kLeastLight * mean[k];
        if (lit) m_gain.ptr<float>(r)[i] = static_cast<float>(mean[k] / light);
        known = known && lit;
      }
      m_unknownPixels += known ? 0 : 1;
    }
  }
}

cv::Mat FlatField::Correct(const cv::Mat& picture, int bits) {
  if (picture.type() != m_type || bits != m_bits) Fit(picture.type(), bits);
  cv::Mat corrected(picture.size(), picture.type());
  const int samples = picture.cols * picture.channels();
  const float limit = static_cast<float>((1 << bits) - 1);
  for (int r = 0; r < picture.rows; ++r) {
    const float* dark = m_dark.ptr<float>(r);
    const float* gain = m_gain.ptr<float>(r);
    if (picture.depth() == CV_8U) {
      CorrectRow(picture.ptr<std::uint8_t>(r), dark, gain, samples, limit,
                 corrected.ptr<std::uint8_t>(r));
    } else {
      CorrectRow(picture.ptr<std::uint16_t>(r), dark, gain, samples, limit,
                 corrected.ptr<std::uint16_t>(r));
    }
  }
  return corrected;
}

}  // namespace jqhost
