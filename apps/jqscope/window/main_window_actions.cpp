// What the window's actions do.
#include <QApplication>
#include <QClipboard>
#include <QColorDialog>
#include <QFileDialog>
#include <QMessageBox>
#include <QProgressBar>
#include <QStatusBar>

#include "source/local_path.h"
#include "window/help_page.h"
#include "window/main_window.h"
#include "window/settings_dialog.h"
#include "window/theme.h"

namespace jqscope {
void MainWindow::ConnectRunActions() {
  const auto on = [this](const char* name, auto&& call) {
    connect(m_actions[name], &QAction::triggered, this, call);
  };
  on("quit", [this] { close(); });
  on("start", [this] { Start(); });
  on("new", [this] { Start(); });
  on("pause", [this](bool pause) { m_session.Pause(pause); });
  on("stop", [this] { m_session.Stop(); });
  on("undo", [this] { m_session.Thread().Post([](RunDesk& desk) { desk.Undo(); }); });
  connect(m_view, &MosaicView::placePicked, this, [this](QPoint place) {
    m_session.Thread().Post(
        [place](RunDesk& desk) { desk.ContinueAround(cv::Point(place.x(), place.y())); });
  });
  on("find", [this](bool find) { SetFinding(find); });
  on("settings", [this] { ChangeSettings(); });
  on("help", [this] { ShowHelp(this); });
}

void MainWindow::ConnectPictureActions() {
  const auto on = [this](const char* name, auto&& call) {
    connect(m_actions[name], &QAction::triggered, this, call);
  };
  on("save", [this] { Save(); });
  on("saveas", [this] { SaveAs(); });
  on("cancel", [this] { m_session.CancelSaving(); });
  on("copy", [this] {
    QApplication::clipboard()->setImage(m_view->Grab());
    statusBar()->showMessage(tr("The view is on the clipboard"), 4000);
  });
  on("trim", [this](bool trim) {
    m_preferences.trim = trim;
    m_view->SetTrimmed(trim);
  });
  on("background", [this] { ChooseBackground(); });
  on("noBackground", [this] {
    m_preferences.background.reset();
    ShowBackground();
  });
}

void MainWindow::ConnectViewActions() {
  const auto on = [this](const char* name, auto&& call) {
    connect(m_actions[name], &QAction::triggered, this, call);
  };
  on("fit", [this] { m_view->Fit(); });
  on("one", [this] { m_view->OneToOne(); });
  on("zoomin", [this] { m_view->ZoomBy(1.25); });
  on("zoomout", [this] { m_view->ZoomBy(0.8); });
  m_actions["follow"]->setChecked(m_view->IsFollowing());
  on("follow", [this](bool follow) { m_view->SetFollowing(follow); });
  connect(m_view, &MosaicView::followingChanged, m_actions["follow"], &QAction::setChecked);
  on("left", [this] { m_view->PanBy(QPointF(m_view->width() / 8.0, 0)); });
  on("right", [this] { m_view->PanBy(QPointF(-m_view->width() / 8.0, 0)); });
  on("up", [this] { m_view->PanBy(QPointF(0, m_view->height() / 8.0)); });
  on("down", [this] { m_view->PanBy(QPointF(0, -m_view->height() / 8.0)); });
  on("theme", [this] { SwitchTheme(); });
  on("about", [this] {
    QMessageBox::about(this, tr("About"),
                       tr("<b>JQ Scope %1</b><p>Shows a mosaic grow while you move the "
                          "microscope's stage.</p>")
                           .arg(QApplication::applicationVersion()));
  });
}

void MainWindow::SetFinding(bool find) {
  m_preferences.findMe = find;
  m_actions["find"]->setChecked(find);
  m_session.Thread().Post([find](RunDesk& desk) { desk.findsLost = find; });
}

void MainWindow::ChangeSettings() {
  SettingsDialog dialog(m_preferences, this);
  if (dialog.exec() != QDialog::Accepted) return;
  m_preferences = dialog.Chosen();
  m_view->SetPixelSize(m_preferences.PixelSize() * m_report.detectLevel);
}

void MainWindow::ForgetPicture() {
  if (m_options.save.isEmpty()) m_savePath.clear();
  m_savedFrames = 0;
  m_anyRun = true;
  m_journalBar->hide();
}

void MainWindow::Start() {
  if (WarnOfUnsaved()) return;
  ForgetPicture();
  RunSettings settings = m_preferences.run;
  settings.source = SourceWords(m_session.Source());
  const bool asked = !m_options.journal.isEmpty();
  if (!m_shelf.isEmpty() && (asked || m_preferences.journal != JournalKeeping::kNone)) {
    settings.journal = NewJournalFolder(ToLocalPath(m_shelf));
  }
  m_session.Start(settings, EndOfJournal());
}

// True when the person wants to keep what is there.
bool MainWindow::WarnOfUnsaved() {
  if (m_report.path.size() <= std::max(1, m_savedFrames) || m_options.IsScript()) return false;
  if (property("discards").toBool()) return false;
  return QMessageBox::question(this, tr("Not saved"),
                               tr("%n placed frame(s) are not saved. Go on without saving?",
                                  nullptr, static_cast<int>(m_report.path.size()) - m_savedFrames),
                               QMessageBox::Discard | QMessageBox::Cancel,
                               QMessageBox::Cancel) != QMessageBox::Discard;
}

void MainWindow::Save() {
  if (m_savePath.isEmpty()) return SaveAs();
  SaveTo(m_savePath);
}

void MainWindow::SaveAs() {
  const QString path = QFileDialog::getSaveFileName(
      this, tr("Save the picture"), m_preferences.saveFolder + "/mosaic.png",
      tr("Pictures (*.png *.ome.tif *.ome.tiff *.dzi *.tif *.tiff *.jpg *.bmp *.ppm *.webp);;"
         "All files (*)"));
  if (path.isEmpty()) return;
  m_savePath = path;
  m_preferences.saveFolder = QFileInfo(path).absolutePath();
  SaveTo(path);
}

void MainWindow::SaveTo(const QString& path) {
  SaveOrder order;
  order.options.path = ToLocalPath(path);
  order.trim = m_preferences.trim;
  if (const std::optional<QColor>& colour = m_preferences.background) {
    order.options.background = {colour->red(), colour->green(), colour->blue()};
  }
  if (m_preferences.PixelSize() > 0) {
    const double metres = 1e-6 * m_preferences.PixelSize() * m_report.detectLevel;
    order.options.pixelSize = cv::Size2d(metres, metres);
  }
  m_savedFrames = static_cast<int>(m_report.path.size());
  statusBar()->showMessage(tr("Saving %1").arg(path));
  m_session.Save(order);
  m_progress->setValue(0);
  m_progress->show();
  m_actions["cancel"]->setEnabled(true);
}

void MainWindow::OnSaved(const QString& path, const QString& problem) {
  if (path.isEmpty()) m_savedFrames = 0;
  m_progress->setVisible(m_session.Saving() > 0);
  m_actions["cancel"]->setEnabled(m_session.Saving() > 0);
  statusBar()->showMessage(problem.isEmpty() ? tr("Saved as %1").arg(path) : problem);
  if (!problem.isEmpty() && m_options.IsScript()) qWarning("jqscope: %s", qPrintable(problem));
  Q_EMIT saved(path, problem);
  if (m_options.quit && m_report.phase == RunPhase::kEnded) {
    if (problem.isEmpty()) m_session.Thread().EndWith(EndOfJournal());
    QApplication::exit(problem.isEmpty() ? 0 : 1);
  }
}

void MainWindow::OnRunOver() {
  if (m_scriptDone || m_report.batch) return;
  m_scriptDone = true;
  if (!m_options.save.isEmpty()) return SaveTo(m_options.save);
  if (m_options.quit) m_session.Thread().EndWith(EndOfJournal());
  if (m_options.quit) QApplication::exit(m_report.path.isEmpty() ? 1 : 0);
}

// The view shows each colour while it is chosen.
void MainWindow::ChooseBackground() {
  QColorDialog dialog(m_preferences.background.value_or(Qt::white), this);
  dialog.setWindowTitle(tr("Background"));
  connect(&dialog, &QColorDialog::currentColorChanged, m_view,
          [this](const QColor& colour) { m_view->SetBackground(colour); });
  m_view->SetBackground(dialog.currentColor());
  if (dialog.exec() == QDialog::Accepted) m_preferences.background = dialog.selectedColor();
  ShowBackground();
}

void MainWindow::ShowBackground() {
  m_view->SetBackground(m_preferences.background);
}

void MainWindow::SwitchTheme() {
  const int next = (static_cast<int>(m_preferences.theme) + 1) % 3;
  m_preferences.theme = static_cast<Theme>(next);
  ApplyTheme(m_preferences.theme);
  const QString names[] = {tr("Theme of the system"), tr("Light theme"), tr("Dark theme")};
  statusBar()->showMessage(names[next], 4000);
}

}  // namespace jqscope
