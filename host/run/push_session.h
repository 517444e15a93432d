#ifndef JQHOST_RUN_PUSH_SESSION_H
#define JQHOST_RUN_PUSH_SESSION_H

#include <optional>

#include "host/output/picture.h"
#include "host/record/run_record.h"
#include "host/run/stitch_settings.h"
#include "host/source/frame_source.h"
#include "host/verdict/frame_judge.h"
#include "jqimagestitching.h"

namespace jqhost {

/// A live run: takes one frame after another, as a camera gives them, and tells
/// what became of each. To be used from one thread at a time.
class PushSession {
 public:
  /// @param thumbnails whether results carry a small picture of the frame
  explicit PushSession(const StitchSettings& settings, bool thumbnails = false)
      : m_settings(settings), m_thumbnails(thumbnails) {}

  /// Judges and, if it fits, places the frame. Raises nothing: what goes wrong is
  /// the result's cause, and the run can go on.
  FrameResult Take(const SourceFrame& frame);

  /// The same for a caller that has something else to do meanwhile: the doubt about a
  /// placed frame is looked into on another thread. Where `IsUnsettled`, the result lacks
  /// it until `Settle`, which is called before the next frame is taken. Until then the
  /// frame's pixels must neither change nor go away.
  FrameResult TakeUnsettled(const SourceFrame& frame);
  bool IsUnsettled() const { return m_judge && m_judge->IsUnsettled(); }
  void Settle(FrameResult& result) { m_judge->Settle(result); }

  /// Whether any frame could be used so far. Nothing below has a meaning before.
  bool HasStarted() const { return m_judge.has_value(); }
  /// Whether memory ran out: more frames can be tried, but will hardly fit.
  bool OutOfMemory() const { return m_outOfMemory; }

  /// The picture so far, which belongs to the stitcher; the run can go on.
  Picture PictureSoFar(bool trim) const;
  /// The picture at the end of the run, cut where the stitcher would cut it.
  Picture FinalPicture(bool trim) const;
  /// Writes into the record what must be known to find frames in the picture.
  void Describe(const Picture& picture, RunRecord& record) const;

  JQImageStitching& Stitcher() { return m_stitcher; }
  const FrameJudge& Judge() const { return *m_judge; }

 private:
  void Stitch(const cv::Mat& image, FrameResult& result);
  void CompareWithPicture(const cv::Mat& image, FrameResult& result) const;

  StitchSettings m_settings;
  bool m_thumbnails;
  JQImageStitching m_stitcher;
  std::optional<FrameJudge> m_judge;  // from the first usable frame on
  bool m_outOfMemory = false;
};

}  // namespace jqhost

#endif  // JQHOST_RUN_PUSH_SESSION_H
