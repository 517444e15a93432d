// Files and folders that are dropped on the window, or chosen: stitched as a batch, ended by
// hand, or taken as the source of a live run.
#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>
#include <future>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/videoio.hpp>

#include "host/simulate/slide.h"
#include "jqimagestitching.h"
#include "scope/session_driver.h"

using jqscope::MainWindow;
using jqscope::RunPhase;

class BatchTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir m_folder;
  cv::Mat m_slide;
  QString Path(const QString& name) const { return m_folder.filePath(name); }
  cv::Mat View(int x, int y) const { return m_slide(cv::Rect(x, y, 480, 360)).clone(); }
  bool Write(const QString& name, const cv::Mat& picture) const {
    return cv::imwrite(Path(name).toStdString(), picture);
  }

 private Q_SLOTS:
  void initTestCase();
  void droppedFolderIsStitchedAsABatch();
  void cancelKeepsWhatIsPlaced();
  void filesThatCannotBeStitched();
  void droppedVideoAndJournalAreSources();
};

namespace {

void Drop(MainWindow& window, const QStringList& paths) {
  QMimeData data;
  QList<QUrl> urls;
  for (const QString& path : paths) urls << QUrl::fromLocalFile(path);
  data.setUrls(urls);
  QDragEnterEvent enter(QPoint(40, 40), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&window, &enter);
  QVERIFY(enter.isAccepted());
  QDropEvent drop(QPointF(40, 40), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&window, &drop);
  QVERIFY(drop.isAccepted());
}

// What the library's own batch makes of the files.
cv::Mat BatchByLibrary(const QStringList& files) {
  JQImageStitching stitcher;
  cv::Mat picture;
  stitcher.m_fileList = files;
  QObject::connect(
      &stitcher, &JQImageStitching::sglMultiImageProcessFinished, &stitcher,
      [&picture](void* done) {
        if (done != nullptr) picture = static_cast<cv::Mat*>(done)->clone();
      },
      Qt::DirectConnection);
  QMetaObject::invokeMethod(&stitcher, "slotStartStitching", Qt::DirectConnection);
  return picture;
}

QStringList Rows(const QListWidget& list) {
  QStringList rows;
  for (int i = 0; i < list.count(); ++i) rows << list.item(i)->text();
  return rows;
}

}  // namespace

void BatchTest::initTestCase() {
  m_slide = jqhost::PaintSlide(cv::Size(1040, 600), 1);
  QVERIFY(QDir(m_folder.path()).mkpath("files"));
  // f2 comes before f10 as people count, and after it by bytes.
  int step = 0;
  for (const int i : {1, 2, 4, 5, 6, 8, 9, 10}) {
    QVERIFY(Write(QString("files/f%1.png").arg(i), View(60 + 60 * step, 100 + 8 * step)));
    ++step;
  }
  QVERIFY(Write("files/f3.png", m_slide(cv::Rect(0, 0, 100, 90))));
  QFile text(Path("files/f7.png"));
  QVERIFY(text.open(QIODevice::WriteOnly));
  text.write("no picture at all");
}

void BatchTest::droppedFolderIsStitchedAsABatch() {
  SessionDriver driver;
  MainWindow& window = driver.Window();
  auto* bar = window.findChild<jqscope::BatchBar*>();
  auto* list = bar->findChild<QListWidget*>();
  QVERIFY(!bar->isVisible());
  Drop(window, {Path("files")});
  QTRY_VERIFY(driver.Report().batch && driver.Report().phase == RunPhase::kEnded);
  QVERIFY2(window.Sentence() == "Done: 8 of 10 files are in the picture; save it",
           qPrintable(window.Sentence() + "; " + Rows(*list).join("; ")));
  QCOMPARE(driver.Report().path.size(), 8);
  QVERIFY(bar->isVisible());
  QVERIFY(!bar->findChild<QPushButton*>("cancelBatch")->isVisible());
  const QStringList rows = Rows(*list);
  QCOMPARE(rows.size(), 2);
  QCOMPARE(rows[0], QString("f3.png: other size (100 × 90 instead of 480 × 360)"));
  QVERIFY2(rows[1].startsWith("f7.png: unreadable ("), qPrintable(rows[1]));

  QStringList good;
  for (const int i : {1, 2, 4, 5, 6, 8, 9, 10}) good << Path(QString("files/f%1.png").arg(i));
  const cv::Mat expected = BatchByLibrary(good);
  QCOMPARE(driver.SaveAndWait(Path("batch.png")), QString());
  QVERIFY(IsSamePicture(cv::imread(Path("batch.png").toStdString()), expected));
  // It is in the view: the tile over the first frame's corner has that frame's pixel.
  const QRect bounds = driver.Report().bounds;
  QCOMPARE(bounds.size(), QSize(expected.cols, expected.rows));
  const QRgb pixel = window.Work().Tiles().Tile({0, 0, 0}).pixel(0, 0);
  const cv::Vec3b there = expected.at<cv::Vec3b>(-bounds.y(), -bounds.x());
  QCOMPARE(qRgb(qRed(pixel), qGreen(pixel), qBlue(pixel)), qRgb(there[2], there[1], there[0]));
  QVERIFY(window.View().Visible().contains(QRectF(bounds)));

  // Start takes the same files as frames of a live run, and the list goes.
  QVERIFY(window.Action("start")->isEnabled());
  window.Action("start")->trigger();
  QTRY_VERIFY(!driver.Report().batch && driver.Report().phase == RunPhase::kEnded);
  QVERIFY(!bar->isVisible());
  QCOMPARE(driver.Report().stitched, 10);
}

void BatchTest::cancelKeepsWhatIsPlaced() {
  SessionDriver driver;
  MainWindow& window = driver.Window();
  // The batch waits with three files done, until the button was pressed.
  std::promise<void> pressed;
  std::shared_future<void> gate = pressed.get_future().share();
  window.Work().Thread().Post([gate](jqscope::RunDesk& desk) {
    desk.onProgress = [publish = desk.onProgress, &desk, gate] {
      publish();
      if (desk.Report().batch->done == 3) gate.wait();
    };
  });
  QStringList files;
  for (const int i : {10, 9, 8, 6, 5, 4, 2, 1}) files << Path(QString("files/f%1.png").arg(i));
  Drop(window, files);
  QTRY_VERIFY(driver.Report().batch && driver.Report().batch->done == 3);
  QCOMPARE(driver.Report().phase, RunPhase::kBatch);
  QCOMPARE(window.Sentence(), QString("Stitching the files: 3 of 8"));
  auto* progress = window.findChild<jqscope::BatchBar*>()->findChild<QProgressBar*>();
  QCOMPARE(progress->value(), 3);
  QCOMPARE(progress->maximum(), 8);
  QVERIFY(!window.Action("start")->isEnabled() && !window.Action("save")->isEnabled());
  window.findChild<QPushButton*>("cancelBatch")->click();
  pressed.set_value();
  QTRY_COMPARE(driver.Report().phase, RunPhase::kEnded);
  const auto placed = static_cast<int>(driver.Report().path.size());
  QVERIFY2(placed >= 3 && placed < 8, QByteArray::number(placed));
  QCOMPARE(window.Sentence(), QString("Stopped: %1 of 8 files are in the picture").arg(placed));
  QCOMPARE(driver.SaveAndWait(Path("stopped.png")), QString());
  QStringList first;
  for (const int i : {1, 2, 4, 5, 6, 8}) {
    if (first.size() < placed) first << Path(QString("files/f%1.png").arg(i));
  }
  QVERIFY(IsSamePicture(cv::imread(Path("stopped.png").toStdString()), BatchByLibrary(first)));

  // The window goes away in the middle of a batch.
  Drop(window, files);
  QTRY_COMPARE(driver.Report().phase, RunPhase::kBatch);
}

void BatchTest::filesThatCannotBeStitched() {
  QVERIFY(QDir(m_folder.path()).mkpath("empty"));
  SessionDriver driver;
  Drop(driver.Window(), {Path("empty")});
  QTRY_VERIFY(driver.Report().batch && driver.Report().phase == RunPhase::kEnded);
  QVERIFY2(driver.Window().Sentence().startsWith("The files could not be stitched: the folder"),
           qPrintable(driver.Window().Sentence()));
  QVERIFY(!driver.Window().Action("save")->isEnabled());
  Drop(driver.Window(), {Path("files/f7.png"), Path("nowhere.png")});
  QTRY_COMPARE(driver.Window().Sentence(), QString("None of the files could be used"));
  QCOMPARE(driver.Window().findChild<QListWidget*>("leftOut")->count(), 2);
  QVERIFY(driver.SaveAndWait(Path("none.png")).contains("no picture"));
  // One file alone is a picture too.
  Drop(driver.Window(), {Path("files/f1.png")});
  QTRY_COMPARE(driver.Window().Sentence(),
               QString("Done: 1 of 1 files are in the picture; save it"));
  QCOMPARE(driver.SaveAndWait(Path("one.png")), QString());
  QVERIFY(IsSamePicture(cv::imread(Path("one.png").toStdString()), View(60, 100)));
}

void BatchTest::droppedVideoAndJournalAreSources() {
  cv::VideoWriter video(Path("moving.avi").toStdString(), cv::CAP_OPENCV_MJPEG,
                        cv::VideoWriter::fourcc('M', 'J', 'P', 'G'), 10, cv::Size(480, 360));
  for (int i = 0; i < 4; ++i) video.write(View(100 + 70 * i, 200));
  video.release();
  jqscope::Options options = SessionDriver::FreshOptions();
  options.journal = Path("shelf");
  int placed = 0;
  {
    SessionDriver driver(options);
    Drop(driver.Window(), {Path("moving.avi")});
    QTRY_COMPARE(driver.Report().phase, RunPhase::kEnded);
    QVERIFY(!driver.Report().batch);
    placed = static_cast<int>(driver.Report().path.size());
    QVERIFY2(placed >= 3, QByteArray::number(placed));
    QCOMPARE(driver.SaveAndWait(Path("video.png")), QString());
  }  // gone without having been closed, so its journal stays
  const QStringList journals = QDir(Path("shelf")).entryList(QDir::AllDirs | QDir::NoDotAndDotDot);
  QCOMPARE(journals.size(), 1);
  // The frames of the journal give the same picture again.
  SessionDriver driver;
  Drop(driver.Window(), {Path("shelf") + "/" + journals.first()});
  QTRY_COMPARE(driver.Report().phase, RunPhase::kEnded);
  QCOMPARE(driver.Report().stitched, placed);
  QCOMPARE(driver.SaveAndWait(Path("again.png")), QString());
  QVERIFY(IsSamePicture(cv::imread(Path("again.png").toStdString()),
                        cv::imread(Path("video.png").toStdString())));
}

QTEST_MAIN(BatchTest)
#include "batch_test.moc"
