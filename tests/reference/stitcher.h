#ifndef JQ_TESTS_REFERENCE_STITCHER_H
#define JQ_TESTS_REFERENCE_STITCHER_H

#include <cstdint>
#include <functional>
#include <memory>
#include <opencv2/core.hpp>
#include <string>
#include <vector>

#include "jqglobalclass.h"
#include "reference/algorithm.h"

namespace reference {

/// Plain loops over the samples; the same checks and refusals.
void ConvertJQImgToCv8UC3(const _tagJQIMG* img, cv::Mat& out);

/// Decodes every file.
bool IsImageSizeMatched(const std::vector<std::string>& files);

/// x1, y1, x2, y2.
struct Rect4 {
  int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
};

/// The plain twin of `JQImageStitching`: the same members, all of them public, and
/// the same operations step by step. What a batch run signals is collected in lists.
/// An error passes through and leaves the twin as it happens to be.
class Stitcher {
 public:
  Algorithm m_algorithm;
  int m_canvasRows = 10000, m_canvasCols = 10000;
  cv::Size m_frameSize = cv::Size(5000, 5000);
  cv::Point m_framePos;
  int m_frameRows = 0, m_frameCols = 0;
  cv::Point m_frameOffset;
  Rect4 m_cutRect, m_contentRect;
  cv::Mat m_curFrame, m_resultMat;
  bool m_bLastFrameAccepted = true;
  bool m_bStitchStarted = true;
  int m_nFrameCount = 0, m_nReserved = 0;
  cv::Mat m_refFrame;
  std::unique_ptr<_tagJQIMG> m_pOutImage;
  std::vector<std::string> m_fileList;  // local 8-bit encoding
  cv::Point m_mosaicMin, m_mosaicMax;
  cv::Mat m_mosaic;
  int m_nOverlapMode = 0, m_nStitchState = 0;  // not set before a run
  float m_fMinOverlap = 0, m_fMaxOverlap = 0;  // likewise

  // What a host learns from the accessors beyond the members above.
  std::vector<cv::Rect> m_placed;  // every frame of this run, mosaic pixels
  bool m_lastFramePlaced = false;
  // What the batch signals carried: the texts, and for every end of a run the
  // picture (`finishedPicture` is empty where `finishedNull` is set).
  std::vector<std::string> m_statusTexts;
  std::vector<bool> m_finishedNull;
  std::vector<cv::Mat> m_finishedPicture;
  std::function<void()> m_onStatus;  // called after every text

  int GetCurImageSize() const;
  cv::Size GetCurSize() const;
  bool IsOffsetPointValid() const;
  cv::Point GetOffsetPosition() const;
  cv::Point GetCurrentPosition() const;
  cv::Rect GetPlacedBounds() const;

  _tagJQIMG* Stitching(_tagJQIMG* img, int nOverlapMode, int nDetectLevel, int nCornerBudget);
  void slotStartStitching();

  void initResultMat(cv::Mat* frame);
  void extendResultMat(cv::Mat* frame);
  void findCutPoint(cv::Mat* frame);
  bool ChangeStitchingBackground(int c0, int c1, int c2);

  bool CutEdge();
  _tagJQIMG* CutEdge(_tagJQIMG* img);
  _tagJQIMG* GetImageStitching(_tagJQIMG* img);
  bool SaveImageStitching(const std::string& path);

 private:
  void FillRecord(const _tagJQIMG* img, const cv::Mat& m);
  void Trim();
  bool PassesAcceptance(const cv::Mat& newFrame) const;
  void Blend(const cv::Mat& newFrame);
  void RememberStart();
  void Report(const std::string& text);
};

}  // namespace reference

#endif  // JQ_TESTS_REFERENCE_STITCHER_H
