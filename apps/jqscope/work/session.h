#ifndef JQSCOPE_WORK_SESSION_H
#define JQSCOPE_WORK_SESSION_H

#include <QObject>
#include <QPointer>
#include <memory>

#include "source/capture.h"
#include "view/tile_pyramid.h"
#include "work/save_job.h"
#include "work/stitch_thread.h"

namespace jqscope {

/// Everything behind the window: the source, the run and its picture. Calls return at
/// once; what becomes of them comes back as signals and reports.
class Session : public QObject {
  Q_OBJECT

 public:
  explicit Session(QObject* parent = nullptr);
  /// Ends what goes on; a picture that is being written is finished.
  ~Session() override;

  /// Takes frames from there. A camera is shown at once, files wait for `Start`.
  void SetSource(const SourceChoice& choice);
  const SourceChoice& Source() const { return m_choice; }

  /// Begins a run, from the source's first frame where it has one.
  /// @param earlier what becomes of the earlier run's journal
  void Start(const RunSettings& settings, JournalEnd earlier);
  /// Stitches the files of the source that was set as a batch.
  void StitchFiles(const jqhost::PreparationSettings& preparation, JournalEnd earlier);
  /// Looks for a run that a crash has left; `leftRunFound` comes where there is one.
  void LookForLeftRun(const std::string& shelf);
  /// Takes it up again, with the source that was set; `takenUp` tells when that is done.
  /// @param mostMemory as in `RunSettings`
  void TakeUp(const LeftRun& left, std::int64_t mostMemory);
  /// Removes its journal and looks for another one.
  void ThrowAway(const LeftRun& left, const std::string& shelf);
  /// Asks the camera, and those chosen later, to hold exposure and white balance.
  void HoldLight(bool hold);
  void Pause(bool pause);
  /// Ends the run, or the batch after the file in hand.
  void Stop();
  /// Saves what is placed when the frame in hand is done; the run goes on.
  void Save(const SaveOrder& order);
  /// Pictures that are being saved.
  int Saving() const { return m_saving; }
  /// Ends what is being saved, without a trace.
  void CancelSaving();

  RunReport Report() { return m_thread.TakeReport(); }
  void BringWantedTiles() { m_thread.BringWantedTiles(); }
  TilePyramid& Tiles() { return m_tiles; }
  Stage& Microscope() { return m_stage; }
  StitchThread& Thread() { return m_thread; }

 Q_SIGNALS:
  void reported();
  void tilesCame();
  void sourceOpened();
  void sourceFailed(const QString& why, bool retrying);
  /// @param obeyed false: the camera cannot do that
  void lightHeld(bool hold, bool obeyed);
  /// @param path what was written, empty when nothing was; @param problem what to tell
  void saved(const QString& path, const QString& problem);
  void saveProgressed(int percent);
  void leftRunFound(const jqscope::LeftRun& left);
  void takingUp(int done, int of);
  /// @param problem why the run could not be taken up; empty: it goes on
  void takenUp(const QString& problem);
  void complained(const QString& what);

 private:
  void OpenCapture(const SourceChoice& choice);

  TilePyramid m_tiles;
  Stage m_stage;
  SourceChoice m_choice;
  int m_saving = 0;
  bool m_holdLight = false;
  QPointer<Capture> m_capture;
  jqhost::StopToken m_stop;  // of taking a run up
  std::shared_ptr<jqhost::StopToken> m_batchStop = std::make_shared<jqhost::StopToken>();
  StitchThread m_thread{m_tiles};  // last: it ends first
};

}  // namespace jqscope

#endif  // JQSCOPE_WORK_SESSION_H
