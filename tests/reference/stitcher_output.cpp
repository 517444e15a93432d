#include <cstring>
#include <opencv2/imgcodecs.hpp>

#include "reference/stitcher.h"

namespace reference {

// Byte by byte at the record's published offsets, so that a field that moved would
// show.
void Stitcher::FillRecord(const _tagJQIMG* img, const cv::Mat& m) {
  unsigned char bytes[1024];
  std::memcpy(bytes, img, 1024);
  const unsigned width = static_cast<unsigned>(m.cols) & 0xFFFF;
  const unsigned height = static_cast<unsigned>(m.rows) & 0xFFFF;
  const unsigned line = width * 3;
  const unsigned size = height * line;
  bytes[12] = static_cast<unsigned char>(width);
  bytes[13] = static_cast<unsigned char>(width >> 8);
  bytes[14] = static_cast<unsigned char>(height);
  bytes[15] = static_cast<unsigned char>(height >> 8);
  for (int k = 0; k < 4; ++k) {
    bytes[16 + k] = static_cast<unsigned char>(line >> (8 * k));
    bytes[32 + k] = static_cast<unsigned char>(size >> (8 * k));
  }
  bytes[20] = 0;
  bytes[22] = 3;
  bytes[23] = 1;
  const unsigned char* data = m.data;
  std::memcpy(bytes + 48, &data, sizeof data);
  std::memcpy(m_pOutImage.get(), bytes, 1024);
}

// The picture gets its own pixels, also where its old ones would fit: the reference
// may stand on those.
void Stitcher::Trim() {
  cv::Mat picture;
  if (!m_mosaic.empty()) {  // an empty matrix has no ranges to take
    const cv::Mat rows = m_mosaic.rowRange(m_mosaicMin.y, m_mosaicMax.y);
    rows.colRange(m_mosaicMin.x, m_mosaicMax.x).copyTo(picture);
  }
  m_curFrame = picture;
}

bool Stitcher::CutEdge() {
  if (m_curFrame.empty()) return false;
  if (m_mosaic.empty()) return false;
  Trim();
  return true;
}

_tagJQIMG* Stitcher::CutEdge(_tagJQIMG* img) {
  if (!m_pOutImage || m_curFrame.empty() || m_mosaic.empty()) return img;
  Trim();
  if (img == nullptr) return nullptr;
  FillRecord(img, m_curFrame);
  return m_pOutImage.get();
}

_tagJQIMG* Stitcher::GetImageStitching(_tagJQIMG* img) {
  if (!m_pOutImage || m_curFrame.empty() || img == nullptr) return nullptr;
  FillRecord(img, m_curFrame);
  return m_pOutImage.get();
}

bool Stitcher::SaveImageStitching(const std::string& path) {
  if (m_curFrame.empty()) return false;
  if (path.empty()) return false;
  return cv::imwrite(path, m_curFrame);
}

}  // namespace reference
