#ifndef JQ_ENGINE_CURRENT_FRAME_H
#define JQ_ENGINE_CURRENT_FRAME_H

#include <opencv2/core.hpp>

#include "picture/grey.h"
#include "registration/kernels/zero_samples.h"

namespace jqstitching {

/// The new frame's grey pictures, made once and shared by the overlap test and
/// the registration of one call.
class CurrentFrame {
 public:
  /// `frame` is an 8-bit picture of 1 or 3 channels. Without `halved` its half is
  /// not made.
  const GreyAndHalf& make(const cv::Mat& frame, bool halved) {
    m_pictures =
        halved ? ToGreyAndHalf(frame, m_grey, m_half) : GreyAndHalf{ToGrey(frame, m_grey), {}};
    return m_pictures;
  }
  /// Lifts the zero samples of a three-channel frame in the same pass.
  const GreyAndHalf& makeLifted(cv::Mat& frame) {
    m_pictures = LiftToGreyAndHalf(frame, m_grey, m_half);
    return m_pictures;
  }

 private:
  ScratchPicture m_grey, m_half;
  GreyAndHalf m_pictures;
};

}  // namespace jqstitching

#endif  // JQ_ENGINE_CURRENT_FRAME_H
