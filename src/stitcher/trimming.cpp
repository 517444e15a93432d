#include <opencv2/imgcodecs.hpp>
#include <string>

#include "jqimagestitching.h"
#include "stitcher/output_record.h"

bool JQImageStitching::CutEdge() {
  if (m_curFrame.empty() || m_mosaic.empty()) return false;
  m_mosaic.rowRange(m_mosaicMin.y, m_mosaicMax.y)
      .colRange(m_mosaicMin.x, m_mosaicMax.x)
      .copyTo(m_curFrame);
  return true;
}

_tagJQIMG* JQImageStitching::CutEdge(_tagJQIMG* img) {
  if (m_pOutImage == nullptr || !CutEdge()) return img;
  jqstitching::FillRecord(*m_pOutImage, *img, m_curFrame);
  return m_pOutImage;
}

_tagJQIMG* JQImageStitching::GetImageStitching(_tagJQIMG* img) {
  if (m_pOutImage == nullptr || m_curFrame.empty()) return nullptr;
  jqstitching::FillRecord(*m_pOutImage, *img, m_curFrame);
  return m_pOutImage;
}

bool JQImageStitching::SaveImageStitching(const QString& path) {
  if (m_curFrame.empty() || path.isEmpty()) return false;
  const std::string local = path.toLocal8Bit().constData();
  return cv::imwrite(local, m_curFrame);
}
