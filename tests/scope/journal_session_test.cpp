// Runs of the window that are recorded: left by a crash and taken up, and such as cannot
// be recorded.
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <opencv2/imgcodecs.hpp>

#include "host/input_error.h"
#include "host/journal/journal_folder.h"
#include "host/simulate/slide.h"
#include "host/source/image_record.h"
#include "jqimagestitching.h"
#include "scope/session_driver.h"
#include "window/journal_bar.h"

using jqscope::JournalBar;
using jqscope::JournalEnd;
using jqscope::LiveState;
using jqscope::RunPhase;

namespace {

// After a move: waits until a frame of the new place is under the camera. The first frame
// that comes may have been in the making.
void SeeNewPlace(const SessionDriver& driver) {
  for (int i = 0; i < 2; ++i) {
    const auto now = jqscope::Clock::now();
    QTRY_VERIFY(driver.Report().taken > now);
  }
}

bool CanPutAway(const std::string& folder) {
  try {
    jqscope::PutAway(folder, JournalEnd::kRemove);
    return true;
  } catch (const jqhost::InputError&) {
    return false;
  }
}

}  // namespace

class JournalSessionTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir m_folder;
  QString Path(const QString& name) const { return m_folder.filePath(name); }
  cv::Mat Read(const QString& name) const {
    return cv::imread(Path(name).toStdString(), cv::IMREAD_UNCHANGED);
  }
  jqscope::Options Recorded(const QString& shelf) const {
    jqscope::Options options = SessionDriver::FreshOptions();
    options.journal = Path(shelf);
    return options;
  }
  QStringList Journals(const QString& shelf) const {
    return QDir(Path(shelf)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
  }

 private Q_SLOTS:
  void takesTheRunUpAfterACrash();
  void goesOnBehindTheRecordedFiles();
  void goesOnWhereNothingCanBeRecorded();
  void journalsArePutAway();
};

void JournalSessionTest::takesTheRunUpAfterACrash() {
  // What the library has made of the same frames, steps back and places.
  JQImageStitching stitcher;
  stitcher.SetUndoDepth(1);
  const auto stitch = [&stitcher](const std::vector<cv::Mat>& frames, std::size_t from) {
    for (std::size_t i = from; i < frames.size(); ++i) {
      _tagJQIMG record = jqhost::MakeRecord(frames[i]);
      stitcher.Stitching(&record, 0, 1, 8);
    }
  };
  QVector<QPoint> path;
  QPoint last;
  {
    SessionDriver driver(Recorded("crash"));
    QVERIFY(!driver.Window().findChild<JournalBar*>()->isVisible());
    driver.StartRun();
    driver.Move(Qt::Key_Right, 14);
    driver.Key(Qt::Key_Space);
    QTRY_COMPARE(driver.Report().phase, RunPhase::kPaused);
    driver.WaitForStitcher();
    const std::size_t before = driver.Frames().size();
    stitch(driver.Frames(), 0);
    driver.Window().Work().Thread().Post(
        [](jqscope::RunDesk& desk) { desk.ContinueAround(cv::Point(160, 120)); });
    driver.WaitForStitcher();
    QTRY_COMPARE(driver.Report().lastPlaced.topLeft(), QPoint(0, 0));
    const QPoint first = driver.Report().path.first() - driver.Report().bounds.topLeft();
    QVERIFY(stitcher.ContinueAt(stitcher.GetPlacedBounds().tl() + cv::Point(first.x(), first.y())));
    driver.Window().Work().Microscope().MoveTo(cv::Point(440, 330));
    SeeNewPlace(driver);
    driver.Key(Qt::Key_Space);
    QTRY_COMPARE(driver.Report().phase, RunPhase::kRunning);
    driver.Move(Qt::Key_Down, 12);
    driver.Key(Qt::Key_F6);
    driver.WaitForStitcher();
    stitch(driver.Frames(), before);
    const int placed = driver.Report().path.size();
    driver.Key(Qt::Key_Z, Qt::ControlModifier);
    driver.WaitForStitcher();
    QTRY_COMPARE(driver.Report().path.size(), placed - 1);
    QVERIFY(stitcher.UndoLastFrame());
    QCOMPARE(driver.SaveAndWait(Path("before.png")), QString());
    path = driver.Report().path;
    last = driver.Report().lastPlaced.topLeft();
    QVERIFY(path.size() > 5 && last.y() > 20);
  }  // gone without having been closed
  QCOMPARE(Journals("crash").size(), 1);
  QFile log(Path("crash") + "/" + Journals("crash").first() + "/log.txt");
  QVERIFY(log.open(QIODevice::Append));
  log.write("0123abcd {\"entry\":\"fra");  // what a killed program had begun to write
  log.close();

  SessionDriver driver(Recorded("crash"));
  // The camera looks elsewhere, so that the run is taken up and nothing is placed yet.
  driver.Window().Work().Microscope().MoveTo(cv::Point(0, 0));
  auto* bar = driver.Window().findChild<JournalBar*>();
  QTRY_VERIFY(bar->isVisible());
  QVERIFY(!bar->accessibleName().isEmpty());
  QVERIFY2(bar->accessibleDescription().contains(QString::number(path.size()) + " placed frame"),
           qPrintable(bar->accessibleDescription()));
  SeeNewPlace(driver);
  auto* button = bar->findChild<QPushButton*>("takeUp");
  QVERIFY((button->focusPolicy() & Qt::TabFocus) != 0);
  button->setFocus();
  QTest::keyClick(button, Qt::Key_Space);
  QVERIFY(!bar->isVisible());
  QTRY_COMPARE(driver.Report().phase, RunPhase::kRunning);
  QTRY_COMPARE(driver.Report().state, LiveState::kLost);
  QCOMPARE(driver.Report().path, path);
  QCOMPARE(driver.Report().lastPlaced.topLeft(), last);
  QCOMPARE(driver.SaveAndWait(Path("after.png")), QString());
  QVERIFY(IsSamePicture(Read("after.png"), Read("before.png")));
  QVERIFY(IsSamePicture(Read("after.png"), stitcher.GetMosaic()(stitcher.GetPlacedBounds())));

  driver.Window().Work().Microscope().MoveTo(cv::Point(440, 330 + last.y()));
  driver.WaitForFrame();
  driver.Move(Qt::Key_Down, 12);
  QVERIFY(driver.Report().path.size() > path.size());
  driver.Key(Qt::Key_F6);
  driver.WaitForStitcher();
  QCOMPARE(driver.SaveAndWait(Path("on.png")), QString());
  stitch(driver.Frames(), 0);
  QVERIFY(IsSamePicture(Read("on.png"), stitcher.GetMosaic()(stitcher.GetPlacedBounds())));
  QVERIFY(driver.Report().journalProblem.isEmpty());
  // Nobody else is offered a journal that is in use.
  QVERIFY(!jqscope::FindLeftRun(Path("crash").toStdString()));
  driver.Window().Work().Thread().EndWith(JournalEnd::kLeave);
}

void JournalSessionTest::goesOnBehindTheRecordedFiles() {
  const cv::Mat slide = jqhost::PaintSlide(cv::Size(1000, 400), 1);
  std::vector<cv::Mat> frames;
  QVERIFY(QDir().mkpath(Path("frames")));
  const auto put = [&](int from, int to) {
    for (int i = from; i < to; ++i) {
      frames.push_back(slide(cv::Rect(100 + 48 * i, 60, 320, 240)).clone());
      cv::imwrite(Path("frames/%1.png").arg(i).toStdString(), frames.back());
    }
  };
  jqscope::Options options = Recorded("files");
  options.source = Path("frames");
  put(0, 4);
  {
    options.run = true;
    jqscope::MainWindow window(options, nullptr);
    QTRY_COMPARE(window.Report().phase, RunPhase::kEnded);
    QCOMPARE(window.Report().path.size(), 4);
  }
  put(4, 8);
  options.run = false;
  options.source = "microscope";  // the journal knows better
  jqscope::MainWindow window(options, nullptr);
  window.show();
  auto* bar = window.findChild<JournalBar*>();
  QTRY_VERIFY(bar->isVisible());
  bar->findChild<QPushButton*>("takeUp")->click();
  QTRY_COMPARE(window.Report().phase, RunPhase::kEnded);
  QCOMPARE(window.Report().stitched, 8);
  QCOMPARE(window.Report().path.size(), 8);
  QSignalSpy saved(&window, &jqscope::MainWindow::saved);
  window.SaveTo(Path("files.png"));
  QTRY_COMPARE(saved.count(), 1);
  QVERIFY(IsSamePicture(Read("files.png"), StitchByLibrary(frames)));
}

void JournalSessionTest::goesOnWhereNothingCanBeRecorded() {
  QFile file(Path("blocked"));
  QVERIFY(file.open(QIODevice::WriteOnly));
  file.close();
  {
    SessionDriver driver(Recorded("blocked"));
    auto* bar = driver.Window().findChild<JournalBar*>();
    driver.StartRun();
    QTRY_VERIFY(bar->isVisible());
    QVERIFY2(bar->findChild<QLabel*>()->text().contains("The run goes on, but it is not recorded"),
             qPrintable(bar->findChild<QLabel*>()->text()));
    QVERIFY(!bar->findChild<QPushButton*>("takeUp")->isVisible());
    driver.Move(Qt::Key_Right, 8);
    driver.Key(Qt::Key_F6);
    driver.WaitForStitcher();
    QCOMPARE(driver.SaveAndWait(Path("unrecorded.png")), QString());
    QVERIFY(driver.Report().path.size() > 2);
    QVERIFY(IsSamePicture(Read("unrecorded.png"), StitchByLibrary(driver.Frames())));
  }
  // The place for the frames is lost in the middle of a run.
  SessionDriver driver(Recorded("lost"));
  driver.StartRun();
  driver.Move(Qt::Key_Right, 5);
  driver.WaitForStitcher();
  QVERIFY(driver.Report().journalProblem.isEmpty());
  QCOMPARE(Journals("lost").size(), 1);
  const QString frames = Path("lost") + "/" + Journals("lost").first() + "/frames";
  // A frame that is being written keeps the folder from going.
  QTRY_VERIFY(QDir(frames).removeRecursively());
  QFile instead(frames);
  QVERIFY(instead.open(QIODevice::WriteOnly));
  instead.close();
  driver.Move(Qt::Key_Right, 10);
  QTRY_VERIFY(driver.Window().findChild<JournalBar*>()->isVisible());
  driver.Key(Qt::Key_F6);
  driver.WaitForStitcher();
  QCOMPARE(driver.SaveAndWait(Path("partly.png")), QString());
  QVERIFY(IsSamePicture(Read("partly.png"), StitchByLibrary(driver.Frames())));
}

void JournalSessionTest::journalsArePutAway() {
  {
    SessionDriver driver(Recorded("ended"));
    driver.StartRun();
    driver.Move(Qt::Key_Right, 4);
    driver.Key(Qt::Key_F6);
    driver.WaitForStitcher();
    QCOMPARE(Journals("ended").size(), 1);
    driver.StartRun();  // a new one, so that nobody needs the earlier journal
    QCOMPARE(Journals("ended").size(), 1);
    QVERIFY(driver.Window().close());
  }
  QCOMPARE(Journals("ended"), QStringList());
  const std::string folder = Path("ended/run").toStdString();
  {
    const jqhost::JournalFolder held(folder, jqhost::MakeHeader({}, {}, 1, {"microscope"}));
    QVERIFY(!CanPutAway(folder));  // somebody holds it
  }
  jqscope::PutAway(folder, JournalEnd::kLeave);
  QCOMPARE(Journals("ended"), QStringList("run"));
  jqscope::PutAway(folder, JournalEnd::kKeep);
  QCOMPARE(Journals("ended"), QStringList("kept"));
  QVERIFY(QFile::exists(Path("ended/kept/run/header.txt")));
}

QTEST_MAIN(JournalSessionTest)
#include "journal_session_test.moc"
