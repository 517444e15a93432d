#include <cstddef>

#include "reference/algorithm.h"
#include "reference/integer32.h"

namespace reference {

// The three active thresholds stay unset until the offset driver arms them.
Algorithm::Algorithm() {
  m_nDetectLevel = 1;
  m_nDownScale = 1;
  m_nCornerBudget = 8;
  m_nImageCols = 5000;
  m_nImageRows = 5000;
  m_nBoundCols = 20000;
  m_nBoundRows = 20000;
  m_nFlagPreset = 5;
  m_fBrightPreset = 40.0f;
  m_fDefinitionPreset = 15.0f;
  m_nOverlapMode = 0;
  m_nUsePresets = 1;
  m_stitchFlags.matchCount = 0;
  m_stitchFlags.offsetX = 0;
  m_stitchFlags.offsetY = 0;
  m_stitchFlags.positionX = 0;
  m_stitchFlags.positionY = 0;
  m_stitchFlags.overlapFlag = 0;
}

void Algorithm::SetParameter(int nDetectLevel, int nCornerBudget, int nOverlapMode,
                             int nUsePresets) {
  m_nDetectLevel = nDetectLevel;
  m_nCornerBudget = nCornerBudget;
  m_nOverlapMode = nOverlapMode;
  m_nUsePresets = nUsePresets;
  const bool halved = static_cast<std::uint32_t>(nDetectLevel) - 1u < 2u;
  m_nDownScale = halved ? 2 : 1;
}

void Algorithm::JudgeImageChannel(cv::Mat source, cv::Mat& destination) {
  const std::size_t rowBytes = static_cast<std::size_t>(source.cols) * source.elemSize();
  for (int r = 0; r < source.rows; ++r) {
    unsigned char* row = source.ptr(r);
    for (int c = 0; c < source.cols; ++c) {
      if (source.channels() == 1) {
        if (row[c] == 0) row[c] = 1;
      } else {
        // Three bytes a pixel whatever the channel count; a two-channel row ends
        // before the last of them.
        for (std::size_t k = 0; k < 3; ++k) {
          const std::size_t offset = 3 * static_cast<std::size_t>(c) + k;
          if (offset < rowBytes && row[offset] == 0) row[offset] = 2;
        }
      }
    }
  }
  destination = source;
}

}  // namespace reference
