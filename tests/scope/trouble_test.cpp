// What goes wrong in a laboratory: a full disk, a camera that comes loose, odd frames, a
// window that is closed in the middle of something, no display.
#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/videoio.hpp>

#include "host/simulate/slide.h"
#include "scope/session_driver.h"

using jqscope::MainWindow;
using jqscope::RunPhase;

namespace {

// While it exists, no file of this process grows beyond so many bytes: writing more fails as
// on a disk that is full.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) {
    m_signal = std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &m_before);
    rlimit limit = m_before;
    limit.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &m_before);
    std::signal(SIGXFSZ, m_signal);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  rlimit m_before = {};
  void (*m_signal)(int) = nullptr;
};

QByteArray Bytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

cv::Mat Noise(cv::Size size, int type, std::uint64_t seed) {
  cv::Mat frame(size, type);
  cv::RNG(seed).fill(frame, cv::RNG::UNIFORM, 1, 255);
  return frame;
}

}  // namespace

class TroubleTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir m_folder;
  QString Path(const QString& name) const { return m_folder.filePath(name); }
  cv::Mat Read(const QString& name) const {
    return cv::imread(Path(name).toStdString(), cv::IMREAD_UNCHANGED);
  }
  void WriteVideo(const QString& name, const cv::Mat& frame) const {
    cv::VideoWriter video(Path(name).toStdString(), cv::CAP_OPENCV_MJPEG,
                          cv::VideoWriter::fourcc('M', 'J', 'P', 'G'), 10, frame.size());
    for (int i = 0; i < 5; ++i) video.write(frame);
  }

 private Q_SLOTS:
  void fullDiskWhileSaving();
  void cameraThatVanishesAndComesBack();
  void oddFrameSizes();
  void sourceThatEnds();
  void mosaicStaysWithinItsLimit();
  void closedWhileSaving();
  void noDisplay();
};

void TroubleTest::fullDiskWhileSaving() {
  SessionDriver driver;
  driver.StartRun();
  driver.Move(Qt::Key_Right, 10);
  QCOMPARE(driver.SaveAndWait(Path("kept.png")), QString());
  const QByteArray before = Bytes(Path("kept.png"));
  driver.Move(Qt::Key_Right, 5);
  const QStringList files = QDir(m_folder.path()).entryList(QDir::Files);
  {
    const FullDisk full(20000);
    for (const char* name : {"kept.png", "new.ome.tif", "new.jpg"}) {
      const QString problem = driver.SaveAndWait(Path(name));
      QVERIFY2(problem.contains(Path(name)), qPrintable(problem));
      QCOMPARE(driver.Report().phase, RunPhase::kRunning);
    }
  }
  // Nothing half is left, and the earlier picture is as it was.
  QCOMPARE(QDir(m_folder.path()).entryList(QDir::Files), files);
  QVERIFY(Bytes(Path("kept.png")) == before);
  driver.Move(Qt::Key_Right, 4);
  driver.Key(Qt::Key_F6);
  driver.WaitForStitcher();
  QCOMPARE(driver.SaveAndWait(Path("kept.png")), QString());
  QVERIFY(IsSamePicture(Read("kept.png"), StitchByLibrary(driver.Frames())));
}

// A stream of a few frames that are all alike, so that it does not matter which are taken.
void TroubleTest::cameraThatVanishesAndComesBack() {
  const cv::Mat slide = jqhost::PaintSlide(cv::Size(600, 400), 1);
  WriteVideo("camera.avi", slide(cv::Rect(100, 100, 320, 240)));
  WriteVideo("moved.avi", slide(cv::Rect(160, 104, 320, 240)));
  jqscope::Options options = SessionDriver::FreshOptions();
  options.source = "file://" + Path("camera.avi");
  options.run = true;
  MainWindow window(options, nullptr);
  QSignalSpy failed(&window.Work(), &jqscope::Session::sourceFailed);
  QSignalSpy opened(&window.Work(), &jqscope::Session::sourceOpened);
  QTRY_VERIFY(!failed.isEmpty());
  QCOMPARE(failed.first().at(0).toString(), QString("The camera gives no more frames"));
  QVERIFY(failed.first().at(1).toBool());
  QVERIFY(QFile::rename(Path("camera.avi"), Path("gone.avi")));
  QTRY_VERIFY(failed.last().at(0).toString().startsWith("cannot open"));
  QCOMPARE(window.Report().phase, RunPhase::kRunning);
  QCOMPARE(window.Report().path.size(), 1);
  const int before = opened.count();
  QVERIFY(QFile::rename(Path("moved.avi"), Path("camera.avi")));
  QTRY_VERIFY(opened.count() > before);
  QTRY_COMPARE(window.Report().path.size(), 2);
  QCOMPARE(window.Report().phase, RunPhase::kRunning);
  const QPoint moved = window.Report().path.last();
  QVERIFY(qAbs(moved.x() - 60) <= 1 && qAbs(moved.y() - 4) <= 1);
}

void TroubleTest::oddFrameSizes() {
  {
    SessionDriver driver(SessionDriver::FreshOptions(), cv::Size(333, 251));
    driver.StartRun();
    driver.Move(Qt::Key_Right, 8);
    driver.Move(Qt::Key_Down, 8);
    driver.Key(Qt::Key_F6);
    driver.WaitForStitcher();
    QVERIFY(driver.Report().path.size() > 3);
    QCOMPARE(driver.SaveAndWait(Path("odd.png")), QString());
    QVERIFY(IsSamePicture(Read("odd.png"), StitchByLibrary(driver.Frames())));
  }
  // Frames too small for anything, which must not end the program.
  int folder = 0;
  for (const cv::Size size :
       {cv::Size(1, 1), cv::Size(3, 200), cv::Size(500, 2), cv::Size(17, 13)}) {
    const QString name = QString("odd%1").arg(++folder);
    QVERIFY(QDir(m_folder.path()).mkpath(name));
    for (int i = 0; i < 3; ++i) {
      const cv::Mat frame = Noise(size, i == 2 ? CV_16UC1 : CV_8UC3, static_cast<std::uint64_t>(i));
      QVERIFY(cv::imwrite(Path(name + QString("/%1.png").arg(i)).toStdString(), frame));
    }
    jqscope::Options options = SessionDriver::FreshOptions();
    options.source = Path(name);
    options.run = true;
    MainWindow window(options, nullptr);
    window.show();
    QTRY_COMPARE(window.Report().phase, RunPhase::kEnded);
    QCOMPARE(window.Report().stitched, 3);
    QSignalSpy saved(&window, &MainWindow::saved);
    window.SaveTo(Path(name + ".png"));
    QTRY_COMPARE(saved.count(), 1);
    QCOMPARE(saved.first().at(1).toString(), QString());
    QVERIFY(Read(name + ".png").cols >= size.width);
  }
}

void TroubleTest::sourceThatEnds() {
  const cv::Mat slide = jqhost::PaintSlide(cv::Size(700, 400), 1);
  QVERIFY(QDir(m_folder.path()).mkpath("short"));
  for (int i = 0; i < 3; ++i) {
    QVERIFY(cv::imwrite(Path(QString("short/%1.png").arg(i)).toStdString(),
                        slide(cv::Rect(50 + 60 * i, 80, 320, 240))));
  }
  SessionDriver driver;
  jqscope::SourceChoice choice = jqscope::ChooseSource(Path("short").toStdString());
  driver.Window().Work().SetSource(choice);
  QSignalSpy opened(&driver.Window().Work(), &jqscope::Session::sourceOpened);
  // Twice: a folder begins anew with every run.
  for (int run = 1; run <= 2; ++run) {
    driver.Window().Action("start")->trigger();
    QTRY_COMPARE(opened.count(), run);
    driver.WaitForStitcher();  // the run has begun, and may be over already
    QTRY_COMPARE(driver.Report().phase, RunPhase::kEnded);
    const jqscope::RunReport& report = driver.Report();
    QVERIFY2(report.path.size() == 3 && report.stitched == 3,
             QByteArray::number(report.path.size()) + " of " + QByteArray::number(report.stitched) +
                 ", " + jqhost::CauseName(report.last.cause) + " " + report.last.detail.c_str());
    QCOMPARE(driver.Window().Sentence(),
             QString("The source has ended: save the picture, or start a new run"));
    QVERIFY(driver.Window().Action("start")->isEnabled());
    QVERIFY(!driver.Window().Action("pause")->isEnabled());
  }
  // A folder that is gone ends a run before it began, and says why.
  choice.paths = {Path("nowhere").toStdString()};
  QSignalSpy failed(&driver.Window().Work(), &jqscope::Session::sourceFailed);
  driver.Window().Work().SetSource(choice);
  driver.Window().Action("start")->trigger();
  QTRY_VERIFY(!failed.isEmpty());
  QVERIFY(failed.first().at(0).toString().contains("nowhere"));
  QVERIFY(!failed.first().at(1).toBool());
  QTRY_COMPARE(driver.Window().Sentence(),
               QString("The source has ended without a frame that could be used"));
}

void TroubleTest::mosaicStaysWithinItsLimit() {
  SessionDriver driver;
  jqscope::RunSettings settings;
  settings.mostMemory = 1200000;  // of which a frame of 320 x 240 takes 230400
  driver.Window().Work().Start(settings, jqscope::JournalEnd::kLeave);
  QTRY_VERIFY(driver.Report().stitched > 0);
  for (int i = 0; i < 40 && !driver.Report().outOfMemory; ++i) driver.Move(Qt::Key_Right, 1);
  QVERIFY(driver.Report().outOfMemory);
  QVERIFY(driver.Report().mosaicBytes <= settings.mostMemory);
  QVERIFY(driver.Window().Sentence().startsWith("The memory is used up"));
  const auto* counters = driver.Window().findChild<jqscope::Counters*>();
  QVERIFY(counters->text().contains("Left of the limit"));
  QVERIFY(driver.Report().path.size() > 1);
  QCOMPARE(driver.SaveAndWait(Path("limited.png")), QString());
}

void TroubleTest::closedWhileSaving() {
  jqscope::Options options = SessionDriver::FreshOptions();
  options.journal = Path("shelf");
  std::vector<cv::Mat> frames;
  int placed = 0;
  {
    SessionDriver driver(options);
    driver.StartRun();
    driver.Move(Qt::Key_Right, 12);
    driver.Key(Qt::Key_F6);
    driver.WaitForStitcher();
    QTRY_COMPARE(driver.Report().phase, RunPhase::kStopped);
    frames = driver.Frames();
    placed = static_cast<int>(driver.Report().path.size());
    // Whatever the stitching thread is at when the window goes, the picture is asked for.
    driver.Window().Work().Thread().Post([](jqscope::RunDesk&) { QTest::qSleep(50); });
    driver.Window().SaveTo(Path("closing.png"));
    QVERIFY(driver.Window().close());
  }
  QVERIFY(IsSamePicture(Read("closing.png"), StitchByLibrary(frames)));
  // Nobody has heard that it was saved, so the journal is there.
  const std::optional<jqscope::LeftRun> left = jqscope::FindLeftRun(Path("shelf").toStdString());
  QVERIFY(left.has_value());
  QCOMPARE(left->frames, placed);
}

void TroubleTest::noDisplay() {
  const auto run = [](const QByteArray& display) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
      environment.remove(name);
    }
    if (!display.isEmpty()) environment.insert("DISPLAY", display);
    process.setProcessEnvironment(environment);
    process.start(JQSCOPE_PROGRAM, {"--fresh"});
    process.waitForFinished();
    return QString::number(process.exitCode()) + " " + process.readAllStandardError();
  };
  QCOMPARE(run(QByteArray()),
           QString("1 jqscope: there is no display to open a window on (for a script, set "
                   "QT_QPA_PLATFORM=offscreen)\n"));
  QCOMPARE(run(":979"),
           QString("1 jqscope: the display cannot be used: no window can be opened\n"));
}

QTEST_MAIN(TroubleTest)
#include "trouble_test.moc"
