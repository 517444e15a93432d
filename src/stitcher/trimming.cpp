#include <opencv2/imgcodecs.hpp>
#include <string>

#include "stitcher/output_record.h"
#include "stitcher/run_state.h"

void JQImageStitching::RunState::trim(JQImageStitching& stitcher) {
  // A batch run of one file makes no mosaic; an empty matrix has no ranges to take.
  if (stitcher.m_mosaic.empty()) {
    stitcher.m_curFrame.release();
    return;
  }
  // Never into the present pixels, which the reference may share.
  stitcher.m_curFrame = stitcher.m_mosaic.rowRange(stitcher.m_mosaicMin.y, stitcher.m_mosaicMax.y)
                            .colRange(stitcher.m_mosaicMin.x, stitcher.m_mosaicMax.x)
                            .clone();
}

bool JQImageStitching::CutEdge() {
  if (m_curFrame.empty() || m_mosaic.empty()) return false;
  RunState::trim(*this);
  return true;
}

_tagJQIMG* JQImageStitching::CutEdge(_tagJQIMG* img) {
  if (m_pOutImage == nullptr || !CutEdge() || img == nullptr) return img;
  jqstitching::FillRecord(*m_pOutImage, *img, m_curFrame);
  return m_pOutImage;
}

_tagJQIMG* JQImageStitching::GetImageStitching(_tagJQIMG* img) {
  if (img == nullptr || m_pOutImage == nullptr || m_curFrame.empty()) return nullptr;
  RunState::exposeCurrentFrame(*this);
  jqstitching::FillRecord(*m_pOutImage, *img, m_curFrame);
  return m_pOutImage;
}

bool JQImageStitching::SaveImageStitching(const QString& path) {
  if (m_curFrame.empty() || path.isEmpty()) return false;
  const std::string local = path.toLocal8Bit().constData();
  return cv::imwrite(local, m_curFrame);
}
