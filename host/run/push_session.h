#ifndef JQHOST_RUN_PUSH_SESSION_H
#define JQHOST_RUN_PUSH_SESSION_H

#include <cstdint>
#include <functional>
#include <optional>

#include "host/output/picture.h"
#include "host/record/run_record.h"
#include "host/run/stitch_settings.h"
#include "host/source/frame_source.h"
#include "host/verdict/frame_judge.h"
#include "jqimagestitching.h"

namespace jqhost {

class JournalWriter;
struct FrameEntry;
struct ReplayedRun;

/// A live run: takes one frame after another, as a camera gives them, and tells
/// what became of each. To be used from one thread at a time.
class PushSession {
 public:
  /// @param thumbnails whether results carry a small picture of the frame
  explicit PushSession(const StitchSettings& settings, bool thumbnails = false)
      : m_settings(settings), m_thumbnails(thumbnails) {}

  /// Goes on where a recorded run ended, before any frame is taken. Raises `InputError`
  /// where it cannot be gone on from.
  /// @param last the frame that it placed last
  void GoOn(const ReplayedRun& run, const FrameEntry& last);
  /// Records every placed frame from now on in this journal, which must outlive the
  /// session. @param samples what is known of the frames' samples, asked for each
  void Record(JournalWriter& journal, std::function<SampleSummary()> samples);
  /// Takes doubtful placements back from now on.
  void DropDoubtful();
  /// Most bytes of the mosaic, 0 for any number: a frame for which it would have to grow
  /// beyond is left out, and `OutOfMemory` is true from then on.
  void LimitMemory(std::int64_t bytes);

  /// Judges and, if it fits, places the frame. Raises nothing: what goes wrong is
  /// the result's cause, and the run can go on.
  FrameResult Take(const SourceFrame& frame);

  /// The same for a caller that has something else to do meanwhile: the doubt about a
  /// placed frame is looked into on another thread. Where `IsUnsettled`, the result lacks
  /// it until `Settle`, which is called before the next frame is taken. Until then the
  /// frame's pixels must neither change nor go away.
  FrameResult TakeUnsettled(const SourceFrame& frame);
  bool IsUnsettled() const { return m_judge && m_judge->IsUnsettled(); }
  void Settle(FrameResult& result);
  /// Takes the newest placed frame, or the newest `ContinueAt`, out again, as far as the
  /// stitcher's undo depth reaches.
  /// @param origin, place what `Judge().Origin()` and the place of the frame placed, or
  /// gone on from, last were before it
  bool UndoTo(cv::Point origin, cv::Point place);
  /// Goes on from a place of the picture: the next frame is measured against the block with
  /// this top-left corner, in the coordinates of results. False where there is no picture.
  bool ContinueAt(cv::Point place);

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
  void TakeBack(FrameResult& result);
  void JudgeFrom(cv::Point origin, cv::Point place);
  void CompareWithPicture(const cv::Mat& image, FrameResult& result) const;
  void RecordPlaced(const FrameResult& result);

  StitchSettings m_settings;
  bool m_thumbnails;
  JQImageStitching m_stitcher;
  std::optional<FrameJudge> m_judge;  // from the first usable frame on
  bool m_outOfMemory = false;
  bool m_dropDoubtful = false;
  std::int64_t m_mostMemory = 0;
  JournalWriter* m_journal = nullptr;
  std::function<SampleSummary()> m_samples;
  cv::Mat m_newest;  // the frame taken last, until it is recorded
};

}  // namespace jqhost

#endif  // JQHOST_RUN_PUSH_SESSION_H
