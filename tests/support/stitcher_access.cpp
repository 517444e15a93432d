#include "support/stitcher_access.h"

// Access checks do not apply to the arguments of an explicit instantiation, so a
// private member's address may be named there; a friend function hands it out.
namespace inside {
namespace {

template <class Tag, typename Tag::Pointer kMember>
struct Open {
  friend typename Tag::Pointer Reach(Tag) { return kMember; }
};

}  // namespace

#define JQ_OPEN(Name, Type, member)                           \
  namespace {                                                 \
  struct Name##Tag {                                          \
    using Pointer = Type JQImageStitching::*;                 \
    friend Pointer Reach(Name##Tag);                          \
  };                                                          \
  template struct Open<Name##Tag, &JQImageStitching::member>; \
  }                                                           \
  Type& Name(JQImageStitching& stitcher) {                    \
    return stitcher.*Reach(Name##Tag());                      \
  }

JQ_OPEN(Algorithm, JQStitchingAlgorithm*, m_pAlgorithm)
JQ_OPEN(CanvasOrigin, cv::Point, m_canvasOrigin)
JQ_OPEN(LastOffset, cv::Point, m_lastOffset)
JQ_OPEN(CurFrame, cv::Mat, m_curFrame)
JQ_OPEN(LastFrameAccepted, bool, m_bLastFrameAccepted)
JQ_OPEN(StitchStarted, bool, m_bStitchStarted)
JQ_OPEN(FrameCount, std::int32_t, m_nFrameCount)
JQ_OPEN(Reserved, std::int32_t, m_nReserved)
JQ_OPEN(RefFrame, cv::Mat, m_refFrame)
JQ_OPEN(OutImage, _tagJQIMG*, m_pOutImage)
JQ_OPEN(SpareMat, cv::Mat, m_spareMat)
JQ_OPEN(MosaicMin, cv::Point, m_mosaicMin)
JQ_OPEN(MosaicMax, cv::Point, m_mosaicMax)
JQ_OPEN(Mosaic, cv::Mat, m_mosaic)
JQ_OPEN(OverlapMode, std::int32_t, m_nOverlapMode)
JQ_OPEN(StitchState, std::int32_t, m_nStitchState)
JQ_OPEN(MinOverlap, float, m_fMinOverlap)
JQ_OPEN(MaxOverlap, float, m_fMaxOverlap)

#undef JQ_OPEN

}  // namespace inside
