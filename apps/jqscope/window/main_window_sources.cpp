// Where frames come from: chosen, or dropped on the window.
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QMimeData>
#include <QMimeDatabase>
#include <QStatusBar>
#include <QTimer>

#include "source/local_path.h"
#include "source/recorded_frames.h"
#include "window/camera_dialog.h"
#include "window/main_window.h"

namespace jqscope {
namespace {

bool IsVideo(const QString& path) {
  return QMimeDatabase()
      .mimeTypeForFile(path, QMimeDatabase::MatchExtension)
      .name()
      .startsWith("video/");
}

}  // namespace

void MainWindow::ConnectSourceActions() {
  const auto on = [this](const char* name, auto&& call) {
    connect(m_actions[name], &QAction::triggered, this, call);
  };
  on("microscope", [this] {
    SourceChoice choice;
    choice.microscope = m_options.microscope;
    SetSource(choice, "microscope");
  });
  on("camera", [this] { ChooseCamera(); });
  on("folder", [this] { ChooseFolder(SourceKind::kFiles); });
  on("watch", [this] { ChooseFolder(SourceKind::kWatched); });
  on("video", [this] {
    const QString path = QFileDialog::getOpenFileName(this, tr("Video file"));
    if (!path.isEmpty()) SetSource(ChooseSource(ToLocalPath(path)), path);
  });
  on("slide", [this] {
    const QString path =
        QFileDialog::getOpenFileName(this, tr("Slide of the simulated microscope"));
    if (path.isEmpty()) return;
    SourceChoice choice;
    choice.microscope = m_options.microscope;
    choice.microscope.slide = ToLocalPath(path);
    SetSource(choice, "microscope");
  });
  on("hold", [this](bool hold) { m_session.HoldLight(hold); });
  connect(&m_session, &Session::lightHeld, this, [this](bool hold, bool obeyed) {
    statusBar()->showMessage(
        !obeyed ? tr("This camera does not let its exposure and white balance be held")
        : hold  ? tr("Exposure and white balance stay as they are")
                : tr("The camera sets exposure and white balance by itself"),
        6000);
  });
  on("recorded", [this] {
    const QString folder = QFileDialog::getExistingDirectory(this, tr("Journal of a run"));
    if (!folder.isEmpty()) SetSource(ChooseSource(ToLocalPath(folder)), folder);
  });
  on("batch", [this] {
    const QStringList paths = QFileDialog::getOpenFileNames(this, tr("Pictures of one size"));
    if (!paths.isEmpty()) StitchFiles(paths);
  });
  connect(m_batchBar, &BatchBar::cancelled, this, [this] { m_session.Stop(); });
}

void MainWindow::SetSource(const SourceChoice& choice, const QString& kept) {
  m_preferences.source = kept;
  m_session.SetSource(choice);
  m_stageDock->setVisible(choice.kind == SourceKind::kMicroscope);
}

void MainWindow::ChooseCamera() {
  CameraDialog dialog(m_preferences.source, this);
  if (dialog.exec() != QDialog::Accepted || dialog.Chosen().isEmpty()) return;
  SourceChoice choice;
  choice.kind = SourceKind::kCamera;
  choice.camera = ParseCameraName(ToLocalPath(dialog.Chosen())).value_or(CameraName());
  SetSource(choice, dialog.Chosen());
}

void MainWindow::ChooseFolder(SourceKind kind) {
  const QString folder = QFileDialog::getExistingDirectory(
      this, kind == SourceKind::kWatched ? tr("Folder to watch") : tr("Folder of pictures"));
  if (folder.isEmpty()) return;
  SourceChoice choice;
  choice.kind = kind;
  choice.paths = {ToLocalPath(folder)};
  SetSource(choice, kind == SourceKind::kFiles ? folder : QString());
}

void MainWindow::StitchFiles(const QStringList& paths) {
  if (WarnOfUnsaved()) return;
  SourceChoice choice;
  choice.kind = SourceKind::kFiles;
  for (const QString& path : paths) choice.paths.push_back(ToLocalPath(path));
  SetSource(choice, QString());
  ForgetPicture();
  m_session.StitchFiles(m_preferences.run.preparation, EndOfJournal());
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

// Pictures and folders of pictures are stitched as a batch. A video and the journal of a run
// have an order of their own, and become the source of a live run.
void MainWindow::dropEvent(QDropEvent* event) {
  QStringList paths;
  for (const QUrl& url : event->mimeData()->urls()) {
    if (url.isLocalFile()) paths << url.toLocalFile();
  }
  if (paths.isEmpty()) return;
  event->acceptProposedAction();
  // Whoever the files are dragged from waits for this call, and a question may come up.
  QTimer::singleShot(0, this, [this, paths] {
    const QString& first = paths.first();
    if (paths.size() > 1 || !(IsVideo(first) || IsJournal(ToLocalPath(first)))) {
      return StitchFiles(paths);
    }
    SetSource(ChooseSource(ToLocalPath(first)), first);
    Start();
  });
}

}  // namespace jqscope
