#ifndef JQSCOPE_WORK_RUN_DESK_H
#define JQSCOPE_WORK_RUN_DESK_H

#include <deque>
#include <functional>
#include <memory>
#include <optional>

#include "host/journal/journal_writer.h"
#include "host/run/push_session.h"
#include "host/run/stop_token.h"
#include "host/source/frame_preparation.h"
#include "journal/journal_shelf.h"
#include "view/tile_pyramid.h"
#include "work/batch_run.h"
#include "work/lost_search.h"
#include "work/rate.h"
#include "work/reckoning.h"
#include "work/run_report.h"
#include "work/run_settings.h"
#include "work/snapshot.h"
#include "work/timed_frame.h"
#include "work/undo_step.h"

namespace jqscope {

/// A run as the window drives it: takes frames, tells where it stands, paints the tiles
/// that change. Used by the stitching thread alone; knows no window.
class RunDesk {
 public:
  /// @param tiles must outlive the desk
  explicit RunDesk(TilePyramid& tiles);

  /// Begins a run; what an earlier one placed is forgotten. Raises `InputError` when a
  /// flat field cannot be used. A journal that cannot be written is told in the report.
  /// @param earlier what becomes of the earlier run's journal
  void Start(const RunSettings& settings, JournalEnd earlier);
  /// Paints a run that a crash has left anew and goes on with it; its journal goes on too.
  /// Where a stop is asked for, or an error raised, all stays as it was.
  /// @param onFrame hears how many frames are done
  void TakeUp(const LeftRun& left, std::int64_t mostMemory, const jqhost::StopToken& stop,
              const std::function<void(int)>& onFrame);
  /// Stitches files as a batch, to its end; the report tells how it goes. Raises
  /// `InputError` when a flat field cannot be used.
  void StitchFiles(const BatchOrder& order, JournalEnd earlier);
  /// Ends the run for good.
  void End(JournalEnd journal);
  void Pause(bool pause);
  void Stop();

  /// Whether frames of a source that waits should come now.
  bool WantsFrames() const { return m_report.phase == RunPhase::kRunning; }
  /// Stitches the frame where a run goes on, and shows it in any case.
  void Take(const TimedFrame& timed);
  /// Brings back the tiles that the view asks for.
  bool PaintWanted();

  /// Takes the newest placed frame, or the newest place gone on from, back.
  void Undo();
  /// Goes on from the ground around this place of the mosaic.
  void ContinueAround(cv::Point centre);

  /// The picture so far; empty where nothing is placed. While the run goes on its pixels
  /// are a copy: the next frame may be painted into the mosaic where it lies. Of a run that
  /// is over they are shared, and steps back are refused as long as they are in use.
  Snapshot TakeSnapshot(bool trim);

  const RunReport& Report() const { return m_report; }
  const RunSettings& Settings() const { return m_settings; }
  /// Whether frames are shown while none is stitched: those of a camera are.
  bool showsLive = true;
  /// Whether lost frames are looked for among the earlier places.
  bool findsLost = true;
  /// Who looks for a lost frame; calls `GoOnAt` with the place that was found.
  LostSearch::Begin search;
  /// Goes on from a place that a search has found, if the run is still lost.
  void GoOnAt(cv::Point place);

  /// Sees every frame that is stitched, as it is handed to the stitcher.
  std::function<void(const jqhost::SourceFrame&)> onStitched;
  /// Called when the report has changed in the middle of something long.
  std::function<void()> onProgress;

 private:
  void Begin(const RunSettings& settings, std::unique_ptr<jqhost::FramePreparation> preparation,
             std::unique_ptr<jqhost::PushSession> session, JournalEnd earlier);
  void Record(std::unique_ptr<jqhost::JournalWriter> journal);
  void EndJournal(JournalEnd end);
  void CheckJournal();
  void Stitch(jqhost::SourceFrame frame);
  void Prepare(jqhost::SourceFrame& frame);
  void OnPlaced(const jqhost::FrameResult& result);
  void Locate(const jqhost::FrameResult& result, const cv::Mat& image);
  void Show(const cv::Mat& image);
  bool ContinueAt(cv::Point place);
  void LetUndo(cv::Size frame);
  void KeepUndo(cv::Point origin);
  void FollowDrift(const cv::Mat& image);
  void LookForLost(const cv::Mat& image);
  void ShowMosaic(const cv::Rect& placed);
  void Tell(const QString& notice);

  TilePyramid& m_tiles;
  RunSettings m_settings;
  std::unique_ptr<jqhost::FramePreparation> m_preparation;
  std::unique_ptr<jqhost::JournalWriter> m_journal;
  std::unique_ptr<jqhost::PushSession> m_session;  // writes to the journal, so it ends first
  Reckoning m_reckoning;
  Rate m_rate;
  RunReport m_report;
  cv::Point m_place;       // of the frame before, as far as known
  cv::Point m_lastPlaced;  // of the frame placed last
  bool m_mosaicShown = false;
  LostSearch m_lost;
  std::deque<UndoStep> m_undo;
  std::weak_ptr<const bool> m_sharedPixels;  // in use: a picture is being saved from them
  std::unique_ptr<BatchRun> m_batch;         // of files, in place of the session
};

}  // namespace jqscope

#endif  // JQSCOPE_WORK_RUN_DESK_H
