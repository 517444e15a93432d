#include "window/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QKeyEvent>
#include <QProgressBar>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

#include "window/icons.h"
#include "window/theme.h"

namespace jqscope {
namespace {

// A key press moves the stage by this share of the frame, and with Shift by that one,
// which is too far to be followed.
constexpr double kStep = 0.03, kLeap = 0.6;
// Of the numbers and the map, in points of the screen.
constexpr int kSideWidth = 270;

}  // namespace

MainWindow::MainWindow(const Options& options, QSettings* settings)
    : m_options(options), m_settings(settings), m_actions(*this) {
  if (m_settings != nullptr && !options.IsScript()) {
    m_preferences = Preferences::Load(*m_settings);
  } else {
    m_preferences.objectives.append({tr("Unknown objective"), 0.0});
  }
  if (options.theme) m_preferences.theme = *options.theme;
  jqhost::StitchSettings& stitch = m_preferences.run.stitch;
  stitch.overlapMode = options.overlapMode.value_or(stitch.overlapMode);
  stitch.detectLevel = options.detectLevel.value_or(stitch.detectLevel);
  stitch.cornerBudget = options.cornerBudget.value_or(stitch.cornerBudget);
  if (options.noTrim) m_preferences.trim = false;

  setWindowTitle(tr("JQ Scope"));
  setWindowIcon(ProgramIcon());
  setAcceptDrops(true);
  resize(1280, 800);
  BuildPanels();
  ConnectSession();
  ConnectSourceActions();
  ConnectRunActions();
  ConnectPictureActions();
  ConnectViewActions();
  ConnectJournal();
  ApplyTheme(m_preferences.theme);
  m_actions.DrawIcons(palette().color(QPalette::ButtonText));
  m_actions["cancel"]->setEnabled(false);
  // A script gets what the frames alone give.
  SetFinding(m_preferences.findMe && !options.IsScript());
  m_actions["trim"]->setChecked(m_preferences.trim);
  m_view->SetTrimmed(m_preferences.trim);
  ShowBackground();

  const QString source = options.source.isEmpty() ? m_preferences.source : options.source;
  SourceChoice choice = ChooseSource(source.toLocal8Bit().toStdString());
  choice.microscope = options.microscope;
  if (!options.save.isEmpty()) {
    m_savePath = options.save;
    choice.leftOut = {options.save.toLocal8Bit().toStdString()};
  }
  SetSource(choice, source);
  OnReport();
  if (options.run) QTimer::singleShot(0, this, &MainWindow::Start);
}

MainWindow::~MainWindow() = default;

void MainWindow::BuildPanels() {
  auto* centre = new QWidget;
  auto* column = new QVBoxLayout(centre);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  m_banner = new Banner;
  m_coach = new CoachBar;
  m_view = new MosaicView(m_session.Tiles());
  column->addWidget(m_banner);
  column->addWidget(m_coach);
  m_journalBar = new JournalBar;
  column->addWidget(m_journalBar);
  m_batchBar = new BatchBar;
  column->addWidget(m_batchBar);
  column->addWidget(m_view, 1);
  setCentralWidget(centre);

  auto* side = new QWidget;
  auto* sideColumn = new QVBoxLayout(side);
  m_map = new Minimap(m_session.Tiles());
  m_counters = new Counters;
  sideColumn->addWidget(m_map);
  m_drift = new DriftPlot;
  sideColumn->addWidget(m_drift);
  sideColumn->addWidget(m_counters, 1);
  auto* scroll = new QScrollArea;
  scroll->setWidget(side);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  // The numbers keep their width when there is no room for all of them.
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setMinimumWidth(kSideWidth + scroll->verticalScrollBar()->sizeHint().width());
  auto* dock = new QDockWidget(tr("Run"), this);
  dock->setObjectName("run");
  dock->setFeatures(QDockWidget::DockWidgetMovable);
  dock->setWidget(scroll);
  addDockWidget(Qt::RightDockWidgetArea, dock);

  m_stagePanel = new StagePanel(m_session.Microscope());
  m_stageDock = new QDockWidget(tr("Simulated microscope"), this);
  m_stageDock->setObjectName("stage");
  m_stageDock->setFeatures(QDockWidget::DockWidgetMovable);
  auto* stageHolder = new QWidget;
  auto* stageColumn = new QVBoxLayout(stageHolder);
  stageColumn->addWidget(m_stagePanel);
  m_stageDock->setWidget(stageHolder);
  addDockWidget(Qt::RightDockWidgetArea, m_stageDock);
  resizeDocks({dock}, {kSideWidth}, Qt::Horizontal);
  m_progress = new QProgressBar;
  m_progress->setAccessibleName(tr("Progress"));
  m_progress->setMaximumWidth(220);
  m_progress->hide();
  statusBar()->addPermanentWidget(m_progress);
  statusBar()->setSizeGripEnabled(false);
  m_view->setFocus();
}

void MainWindow::ConnectSession() {
  connect(&m_session, &Session::reported, this, &MainWindow::OnReport);
  connect(&m_session, &Session::tilesCame, m_view, &MosaicView::Refresh);
  connect(&m_session, &Session::saved, this, &MainWindow::OnSaved);
  connect(&m_session, &Session::saveProgressed, m_progress, &QProgressBar::setValue);
  connect(&m_session, &Session::sourceOpened, this, [this] {
    statusBar()->clearMessage();
    m_stagePanel->Refresh();
  });
  connect(&m_session, &Session::sourceFailed, this, [this](const QString& why, bool retrying) {
    statusBar()->showMessage(retrying ? tr("%1; trying again").arg(why) : why);
  });
  connect(&m_session, &Session::complained, this,
          [this](const QString& what) { statusBar()->showMessage(what); });
  connect(m_view, &MosaicView::tilesWanted, &m_session, &Session::BringWantedTiles);
  connect(m_view, &MosaicView::viewChanged, this, [this] { m_map->ShowView(m_view->Visible()); });
  connect(m_view, &MosaicView::shown, this, [this](double seconds) { m_latency = seconds; });
  connect(m_map, &Minimap::clicked, m_view, &MosaicView::CentreOn);
}

void MainWindow::OnReport() {
  const bool wasOver = m_report.phase == RunPhase::kEnded;
  const int noticeBefore = m_report.noticeNumber;
  const QString problemBefore = m_report.journalProblem;
  m_report = m_session.Report();
  // Frames that were taken back are not part of the next picture.
  m_savedFrames = std::min(m_savedFrames, static_cast<int>(m_report.path.size()));
  if (m_report.journalProblem != problemBefore && !m_report.journalProblem.isEmpty()) {
    m_journalBar->Tell(tr("The run goes on, but it is not recorded and could not be taken up "
                          "after a crash: %1")
                           .arg(m_report.journalProblem));
  }
  if (m_report.noticeNumber > noticeBefore) statusBar()->showMessage(m_report.notice, 6000);
  LiveStyle style = StyleOf(m_report.state);
  if (m_report.phase == RunPhase::kPaused) style.word = tr("paused");
  if (m_report.phase == RunPhase::kEnded) style.word = tr("ended");
  if (m_report.phase == RunPhase::kStopped) style.word = tr("stopped");
  if (m_report.phase == RunPhase::kBatch) style.word = tr("batch");
  m_banner->Show(style, GuidanceFor(m_report));
  m_batchBar->Show(m_report);
  m_coach->setVisible(!m_report.batch);
  m_coach->Show(CoachingFor(m_report));
  m_view->SetPixelSize(m_preferences.PixelSize() * m_report.detectLevel);
  m_view->Show(m_report);
  m_map->Show(m_report);
  m_drift->Show(m_report, m_preferences.PixelSize());
  m_counters->Show(m_report, m_latency, m_session.Tiles().Bytes());
  UpdateActions();
  if (!wasOver && m_report.phase == RunPhase::kEnded) OnRunOver();
}

void MainWindow::UpdateActions() {
  const RunPhase phase = m_report.phase;
  const bool going = phase == RunPhase::kRunning || phase == RunPhase::kPaused;
  const bool isBatch = phase == RunPhase::kBatch;
  m_actions["start"]->setEnabled(!going && !isBatch);
  m_actions["pause"]->setEnabled(going);
  m_actions["pause"]->setChecked(phase == RunPhase::kPaused);
  m_actions["stop"]->setEnabled(going || isBatch);
  m_actions["undo"]->setEnabled(m_report.undoSteps > 0);
  m_actions["new"]->setEnabled(phase != RunPhase::kIdle && !isBatch);
  const bool hasPicture = !m_report.path.isEmpty() && !isBatch;
  for (const char* name : {"save", "saveas"}) m_actions[name]->setEnabled(hasPicture);
}

// Alone it moves the stage of the simulated microscope, with Shift far.
void MainWindow::keyPressEvent(QKeyEvent* event) {
  const bool isMicroscope = m_session.Source().kind == SourceKind::kMicroscope;
  const double step = (event->modifiers() & Qt::ShiftModifier) != 0 ? kLeap : kStep;
  const int key = event->key();
  const double across = key == Qt::Key_Left ? -step : key == Qt::Key_Right ? step : 0;
  const double down = key == Qt::Key_Up ? -step : key == Qt::Key_Down ? step : 0;
  if (isMicroscope && (across != 0 || down != 0)) return m_stagePanel->Step(across, down);
  QMainWindow::keyPressEvent(event);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (!m_options.quit && WarnOfUnsaved()) return event->ignore();
  if (m_settings != nullptr && !m_options.IsScript()) m_preferences.Save(*m_settings);
  m_session.Thread().EndWith(EndOfJournal());
  event->accept();
}

void MainWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) {
    m_actions.DrawIcons(palette().color(QPalette::ButtonText));
  }
  QMainWindow::changeEvent(event);
}

}  // namespace jqscope
