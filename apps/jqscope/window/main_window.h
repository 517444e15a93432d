#ifndef JQSCOPE_WINDOW_MAIN_WINDOW_H
#define JQSCOPE_WINDOW_MAIN_WINDOW_H

#include <QLabel>
#include <QMainWindow>

#include "settings/preferences.h"
#include "start/options.h"
#include "view/coach_bar.h"
#include "view/counters.h"
#include "view/drift_plot.h"
#include "view/minimap.h"
#include "view/mosaic_view.h"
#include "view/stage_panel.h"
#include "window/actions.h"
#include "window/banner.h"
#include "window/batch_bar.h"
#include "window/journal_bar.h"
#include "work/session.h"

class QDockWidget;
class QProgressBar;
class QSettings;

namespace jqscope {

/// The program's window: shows what the session reports and hands on what the person asks
/// for. It never waits for the session.
class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  /// @param settings where choices are kept; null: nowhere. Must outlive the window.
  MainWindow(const Options& options, QSettings* settings);
  ~MainWindow() override;

  Session& Work() { return m_session; }
  MosaicView& View() { return *m_view; }
  const RunReport& Report() const { return m_report; }
  QString Sentence() const { return m_banner->Sentence(); }
  QAction* Action(const QString& name) const { return m_actions[name]; }
  /// Saves the picture so far there.
  void SaveTo(const QString& path);
  /// Stitches pictures and folders of pictures as a batch.
  void StitchFiles(const QStringList& paths);

 Q_SIGNALS:
  /// A picture was saved, or could not be. @param path empty when it was not
  void saved(const QString& path, const QString& problem);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void BuildPanels();
  void ConnectSession();
  void ConnectSourceActions();
  void ConnectRunActions();
  void ConnectPictureActions();
  void ConnectViewActions();

  void SetSource(const SourceChoice& choice, const QString& kept);
  void ChangeSettings();
  void SetFinding(bool find);
  void ChooseCamera();
  void ChooseFolder(SourceKind kind);
  void ForgetPicture();
  void Start();
  void Save();
  void SaveAs();
  void ChooseBackground();
  void OnReport();
  void OnSaved(const QString& path, const QString& problem);
  void OnRunOver();
  void UpdateActions();
  void ShowBackground();
  void SwitchTheme();
  void ConnectJournal();
  void TakeUp();
  JournalEnd EndOfJournal() const;
  bool WarnOfUnsaved();

  const Options m_options;
  QSettings* m_settings;
  Preferences m_preferences;
  Session m_session;
  Actions m_actions;
  Banner* m_banner;
  CoachBar* m_coach;
  JournalBar* m_journalBar = nullptr;
  BatchBar* m_batchBar = nullptr;
  QString m_shelf;  // of the runs' journals; empty: there are none
  MosaicView* m_view;
  Minimap* m_map = nullptr;
  Counters* m_counters = nullptr;
  DriftPlot* m_drift = nullptr;
  StagePanel* m_stagePanel = nullptr;
  QDockWidget* m_stageDock = nullptr;
  QProgressBar* m_progress = nullptr;  // of saving
  RunReport m_report;
  QString m_savePath;     // of this run
  int m_savedFrames = 0;  // placed frames in the picture saved last
  double m_latency = 0;
  bool m_scriptDone = false;
  bool m_anyRun = false;  // since the window opened
};

}  // namespace jqscope

#endif  // JQSCOPE_WINDOW_MAIN_WINDOW_H
