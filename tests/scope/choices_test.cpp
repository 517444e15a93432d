// What a person chooses: settings, a camera, the light, what a saved picture will have around
// it. Dialogs are filled in by their fields.
#include <QComboBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStatusBar>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

#include "host/source/genicam_source.h"
#include "scope/session_driver.h"
#include "window/camera_dialog.h"
#include "window/settings_dialog.h"

using jqscope::Preferences;

class ChoicesTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir m_folder;

 private Q_SLOTS:
  void settingsDialog();
  void cameraDialog();
  void lightIsHeld();
  void viewShowsWhatWillBeSaved();
  void genicamCamera();
};

void ChoicesTest::settingsDialog() {
  QSettings settings(m_folder.filePath("settings.ini"), QSettings::IniFormat);
  Preferences before = Preferences::Load(settings);
  QCOMPARE(before.run.mostMemory, std::int64_t{0});
  QCOMPARE(before.objectives.size(), 1);
  before.findMe = false;
  before.source = "2@640x480";
  jqscope::SettingsDialog dialog(before);
  // As it opens, it changes nothing.
  QCOMPARE(dialog.Chosen().run.stitch.cornerBudget, before.run.stitch.cornerBudget);
  QCOMPARE(dialog.Chosen().run.stitch.detectLevel, before.run.stitch.detectLevel);
  QCOMPARE(dialog.Chosen().journal, before.journal);
  dialog.findChild<QComboBox*>("overlapMode")->setCurrentIndex(1);
  dialog.findChild<QSpinBox*>("detectLevel")->setValue(3);
  dialog.findChild<QSpinBox*>("cornerBudget")->setValue(40);
  dialog.findChild<QSpinBox*>("mostMemory")->setValue(1500);
  dialog.findChild<QComboBox*>("keepJournal")->setCurrentIndex(2);
  auto* table = dialog.findChild<QTableWidget*>();
  dialog.findChild<QPushButton*>("addObjective")->click();
  QCOMPARE(table->rowCount(), 2);
  table->item(1, 0)->setText("40x = oil");
  table->item(1, 1)->setText("0,125");  // as half of the world writes it
  Preferences chosen = dialog.Chosen();
  QCOMPARE(chosen.PixelSize(), 0.125);
  chosen.Save(settings);
  const Preferences read = Preferences::Load(settings);
  QCOMPARE(read.run.stitch.overlapMode, 1);
  QCOMPARE(read.run.stitch.detectLevel, 3);
  QCOMPARE(read.run.stitch.cornerBudget, 40);
  QCOMPARE(read.run.mostMemory, std::int64_t{1500000000});
  QCOMPARE(read.journal, jqscope::JournalKeeping::kAlways);
  QCOMPARE(read.objectives.size(), 2);
  QCOMPARE(read.objectives[1].name, QString("40x = oil"));
  QCOMPARE(read.PixelSize(), 0.125);
  QVERIFY(!read.findMe);
  QCOMPARE(read.source, QString("2@640x480"));
  // The last objective cannot be removed.
  auto* remove = dialog.findChild<QPushButton*>("removeObjective");
  remove->click();
  remove->click();
  QCOMPARE(table->rowCount(), 1);
  QCOMPARE(dialog.Chosen().objective, 0);
}

void ChoicesTest::cameraDialog() {
  jqscope::CameraDialog dialog("folder/of/pictures");
  QCOMPARE(dialog.Chosen(), QString("0"));
  jqscope::CameraDialog::Found found;
  found.cameras = {{0, "Bench", {{cv::Size(640, 480), 30.0}}},
                   {2, "Eyepiece", {{cv::Size(2592, 1944), 7.5}, {cv::Size(1280, 720), 30.0}}}};
  found.genicam = {"Maker-123"};
  QTest::qWait(0);
  dialog.Offer(found);
  auto* camera = dialog.findChild<QComboBox*>("camera");
  auto* mode = dialog.findChild<QComboBox*>("mode");
  QCOMPARE(camera->count(), 3);
  const auto choose = [camera](int index) {
    camera->setCurrentIndex(index);
    Q_EMIT camera->activated(index);
  };
  choose(1);
  QCOMPARE(camera->currentText(), QString("2: Eyepiece"));
  QCOMPARE(mode->count(), 3);
  QCOMPARE(mode->itemText(1), QString("2592 × 1944, up to 7.5 frames a second"));
  QCOMPARE(dialog.Chosen(), QString("2"));
  mode->setCurrentIndex(1);
  QCOMPARE(dialog.Chosen(), QString("2@2592x1944@7.5"));
  choose(2);
  QCOMPARE(dialog.Chosen(), QString("genicam:Maker-123"));
  auto* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
  camera->setEditText("rtsp://camera/live");
  QCOMPARE(dialog.Chosen(), QString("rtsp://camera/live"));
  QVERIFY(ok->isEnabled());
  camera->setEditText("nothing of the kind");
  QCOMPARE(dialog.Chosen(), QString());
  QVERIFY(!ok->isEnabled());
}

void ChoicesTest::lightIsHeld() {
  SessionDriver driver;
  jqscope::MainWindow& window = driver.Window();
  QSignalSpy held(&window.Work(), &jqscope::Session::lightHeld);
  driver.Key(Qt::Key_E, Qt::ControlModifier);
  QTRY_COMPARE(held.count(), 1);
  QVERIFY(held.last().at(0).toBool() && held.last().at(1).toBool());
  QCOMPARE(window.statusBar()->currentMessage(),
           QString("Exposure and white balance stay as they are"));
  // With the exposure drifting, all frames of one place are still the same.
  jqhost::CameraEffects effects;
  effects.exposure = 30;
  window.Work().Microscope().SetEffects(effects);
  driver.StartRun();
  driver.WaitForFrame();
  const std::vector<cv::Mat> steady = driver.Frames();
  QVERIFY(steady.size() >= 3);
  QVERIFY(IsSamePicture(steady[1], steady[2]));
  // Another camera is asked for the same; a stop and a key later it drifts again.
  window.Work().SetSource(jqscope::SourceChoice());
  QTRY_COMPARE(held.count(), 2);
  driver.Key(Qt::Key_E, Qt::ControlModifier);
  QTRY_COMPARE(held.count(), 3);
  QVERIFY(!held.last().at(0).toBool() && held.last().at(1).toBool());
}

void ChoicesTest::viewShowsWhatWillBeSaved() {
  SessionDriver driver;
  jqscope::MosaicView& view = driver.Window().View();
  driver.StartRun();
  driver.Move(Qt::Key_Right, 8);
  driver.Key(Qt::Key_F6);
  driver.WaitForStitcher();
  QTRY_COMPARE(driver.Report().phase, jqscope::RunPhase::kStopped);
  const QRect bounds = driver.Report().bounds, canvas = driver.Report().canvas;
  QVERIFY(canvas.contains(bounds) && canvas != bounds);
  driver.Key(Qt::Key_F);
  QVERIFY(!view.Visible().contains(QRectF(canvas)));
  driver.Key(Qt::Key_T, Qt::ControlModifier);
  QVERIFY(view.Visible().contains(QRectF(canvas)));
  QCOMPARE(driver.SaveAndWait(m_folder.filePath("whole.png")), QString());
  QCOMPARE(QImage(m_folder.filePath("whole.png")).size(), canvas.size());
  // The background is the same colour in the view and in the file.
  const QPoint empty(canvas.right() - 2, canvas.bottom() - 2);
  view.SetBackground(QColor(10, 200, 30));
  const QPoint there = view.Transform().ToScreen(QPointF(empty)).toPoint();
  QCOMPARE(view.Grab().pixelColor(there * view.devicePixelRatioF()), QColor(10, 200, 30));
  driver.Key(Qt::Key_T, Qt::ControlModifier);
  QVERIFY(!view.Visible().contains(QRectF(canvas)));
  QCOMPARE(driver.SaveAndWait(m_folder.filePath("trimmed.png")), QString());
  QCOMPARE(QImage(m_folder.filePath("trimmed.png")).size(), bounds.size());
}

// The library of these cameras brings a simulated one.
void ChoicesTest::genicamCamera() {
  jqscope::Options options = SessionDriver::FreshOptions();
  options.source = "genicam:Nobody-0";
  jqscope::MainWindow window(options, nullptr);
  QSignalSpy failed(&window.Work(), &jqscope::Session::sourceFailed);
  QTRY_VERIFY(!failed.isEmpty());
  if (!jqhost::HasGenicam()) {
    QVERIFY(failed.first().at(0).toString().contains("without GenICam"));
    return;
  }
  QVERIFY(failed.first().at(0).toString().contains("Nobody-0"));
  window.Work().SetSource(jqscope::ChooseSource(std::string("genicam:Fake_1@320x240@25")));
  QTRY_VERIFY(window.Report().hasFrame);
  QCOMPARE(window.Report().liveRect.size(), QSizeF(320, 240));
  window.Action("start")->trigger();
  QTRY_VERIFY(window.Report().stitched >= 2);
  QVERIFY(window.Report().Count(jqhost::Cause::kUnreadable) == 0);
  QVERIFY(window.Report().path.size() >= 1);
}

QTEST_MAIN(ChoicesTest)
#include "choices_test.moc"
