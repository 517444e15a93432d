// Whole sessions on the simulated microscope, by keys and mouse, each compared with the
// same frames handed to the library.
#include <QClipboard>
#include <QTemporaryDir>
#include <QTest>
#include <opencv2/imgcodecs.hpp>

#include "host/source/image_record.h"
#include "jqimagestitching.h"
#include "scope/session_driver.h"

using jqscope::LiveState;
using jqscope::RunPhase;

namespace {

// What became of the newest frame, for the message of a check that fails.
QByteArray Why(const SessionDriver& driver) {
  const jqhost::FrameResult& last = driver.Report().last;
  return QByteArray(jqhost::CauseName(last.cause)) + ", matches " +
         QByteArray::number(last.measured.matchCount) + ", shift " +
         QByteArray::number(last.measured.offset.x) + " " +
         QByteArray::number(last.measured.offset.y) + ", brightness " +
         QByteArray::number(last.measured.brightness) + ", definition " +
         QByteArray::number(last.measured.definition);
}

}  // namespace

class SessionTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir m_folder;
  QString Path(const QString& name) const { return m_folder.filePath(name); }
  cv::Mat Read(const QString& name) const {
    return cv::imread(Path(name).toStdString(), cv::IMREAD_UNCHANGED);
  }

 private Q_SLOTS:
  void serpentineThatGetsLostTwice();
  void pauseTakesNoFrames();
  void saveWhileRunning();
  void undoSeveralFrames();
  void goOnFromAPlace();
  void findsTheLostFrame();
  void viewByKeysAndMouse();
  void everyActionCanBeReached();
};

void SessionTest::serpentineThatGetsLostTwice() {
  SessionDriver driver;
  QCOMPARE(driver.Window().Sentence(), QString("Press Start, then move slowly"));
  driver.StartRun();
  driver.Move(Qt::Key_Right, 1);
  QTRY_COMPARE(driver.Report().state, LiveState::kTracked);
  QTRY_VERIFY2(driver.Window().Sentence().startsWith("Move on: 3 % of the frame, 10 % needed"),
               qPrintable(driver.Window().Sentence()));
  driver.Move(Qt::Key_Right, 12);
  driver.Move(Qt::Key_Down, 8);

  // Twice the stage is dragged far aside, at once, and back to where it was.
  for (const QPoint aside : {QPoint(80, 0), QPoint(-60, -40)}) {
    driver.DragStage(aside);
    QTRY_VERIFY2(driver.Report().state == LiveState::kLost, Why(driver));
    QTRY_COMPARE(driver.Window().Sentence(), QString("Lost: move back to the highlighted place"));
    driver.DragStage(QPoint(0, 0));
    QTRY_VERIFY2(driver.Report().state != LiveState::kLost, Why(driver));
    driver.DropStage();
    driver.Move(Qt::Key_Left, 6);
  }
  driver.Move(Qt::Key_Down, 6);

  driver.Key(Qt::Key_F6);
  driver.WaitForStitcher();
  QCOMPARE(driver.SaveAndWait(Path("serpentine.png")), QString());
  QVERIFY(driver.Report().path.size() > 8);
  QVERIFY(IsSamePicture(Read("serpentine.png"), StitchByLibrary(driver.Frames())));
}

void SessionTest::pauseTakesNoFrames() {
  SessionDriver driver;
  driver.StartRun();
  driver.Move(Qt::Key_Down, 5);
  driver.Key(Qt::Key_Space);
  QTRY_COMPARE(driver.Report().phase, RunPhase::kPaused);
  const int stitched = driver.Report().stitched;
  const std::size_t frames = driver.Frames().size();
  driver.Key(Qt::Key_Right, Qt::ShiftModifier);
  QTest::qWait(50);
  QCOMPARE(driver.Report().stitched, stitched);
  driver.Key(Qt::Key_Left, Qt::ShiftModifier);
  QCOMPARE(driver.Frames().size(), frames);
  QTest::qWait(30);  // until a frame of the old place is under the camera again
  driver.Key(Qt::Key_Space);
  QTRY_COMPARE(driver.Report().phase, RunPhase::kRunning);
  driver.Move(Qt::Key_Down, 5);
  driver.Key(Qt::Key_F6);
  driver.WaitForStitcher();
  QCOMPARE(driver.SaveAndWait(Path("pause.png")), QString());
  QVERIFY(IsSamePicture(Read("pause.png"), StitchByLibrary(driver.Frames())));
}

void SessionTest::saveWhileRunning() {
  SessionDriver driver;
  driver.StartRun();
  driver.Move(Qt::Key_Right, 10);
  QCOMPARE(driver.SaveAndWait(Path("early.tif")), QString());
  const int placed = driver.Report().path.size();
  QVERIFY(driver.Report().phase == RunPhase::kRunning);
  driver.Move(Qt::Key_Right, 6);
  QVERIFY(driver.Report().path.size() > placed);
  QVERIFY(driver.SaveAndWait("/nonexistent/picture.png").contains("/nonexistent/picture.png"));
  driver.Key(Qt::Key_F6);
  driver.WaitForStitcher();
  QCOMPARE(driver.SaveAndWait(Path("late.png")), QString());
  const cv::Mat whole = StitchByLibrary(driver.Frames());
  QVERIFY(IsSamePicture(Read("late.png"), whole));
  const cv::Mat early = Read("early.tif");
  QVERIFY(!early.empty() && early.cols < whole.cols);
  // Every pixel of the early picture that no later frame covers is the same later.
  const cv::Rect untouched(0, 0, early.cols - 320, early.rows);
  QVERIFY(IsSamePicture(early(untouched), whole(untouched)));
}

void SessionTest::undoSeveralFrames() {
  SessionDriver driver;
  driver.StartRun();
  driver.Move(Qt::Key_Right, 9);
  driver.Move(Qt::Key_Up, 9);
  driver.Key(Qt::Key_F6);
  driver.WaitForStitcher();
  const int placed = driver.Report().path.size();
  QVERIFY(placed > 4);
  for (int i = 0; i < 3; ++i) driver.Key(Qt::Key_Z, Qt::ControlModifier);
  driver.WaitForStitcher();
  QTRY_COMPARE(driver.Report().path.size(), placed - 3);
  QCOMPARE(driver.SaveAndWait(Path("undone.png")), QString());

  JQImageStitching stitcher;
  stitcher.SetUndoDepth(3);
  for (const cv::Mat& frame : driver.Frames()) {
    _tagJQIMG record = jqhost::MakeRecord(frame);
    stitcher.Stitching(&record, 0, 1, 8);
  }
  for (int i = 0; i < 3; ++i) QVERIFY(stitcher.UndoLastFrame());
  QVERIFY(IsSamePicture(Read("undone.png"), stitcher.GetMosaic()(stitcher.GetPlacedBounds())));
  // What the view shows is what is left.
  const QRect bounds = driver.Report().bounds;
  QCOMPARE(bounds.size(),
           QSize(stitcher.GetPlacedBounds().width, stitcher.GetPlacedBounds().height));
  for (int i = 0; i < 30; ++i) driver.Key(Qt::Key_Z, Qt::ControlModifier);
  driver.WaitForStitcher();
  QTRY_COMPARE(driver.Report().path.size(), 1);
  QVERIFY(!driver.Window().Action("undo")->isEnabled());
}

void SessionTest::goOnFromAPlace() {
  SessionDriver driver;
  driver.StartRun();
  driver.Move(Qt::Key_Right, 16);
  driver.Key(Qt::Key_Space);
  QTRY_COMPARE(driver.Report().phase, RunPhase::kPaused);
  driver.WaitForStitcher();
  const std::vector<cv::Mat> before = driver.Frames();
  // The first frame's middle.
  jqscope::MosaicView& view = driver.Window().View();
  const QPoint click = view.Transform().ToScreen(QPointF(160, 120)).toPoint();
  const QPointF centre = view.Transform().ToMosaic(click);
  QTest::mouseClick(&view, Qt::LeftButton, Qt::ControlModifier, click);
  driver.WaitForStitcher();
  QTRY_VERIFY(driver.Report().notice.startsWith("Going on from here"));
  const QPoint place = driver.Report().lastPlaced.topLeft();
  QVERIFY((place - (centre - QPointF(160, 120)).toPoint()).manhattanLength() <= 2);
  for (int i = 0; i < 16; ++i) driver.Key(Qt::Key_Left);
  QTest::qWait(30);  // until a frame of the new place is under the camera
  const QRect bounds = driver.Report().bounds;
  driver.Key(Qt::Key_Space);
  QTRY_COMPARE(driver.Report().phase, RunPhase::kRunning);
  driver.Move(Qt::Key_Down, 8);
  driver.Key(Qt::Key_F6);
  driver.WaitForStitcher();
  QVERIFY(driver.Report().bounds.height() > 240);
  QCOMPARE(driver.SaveAndWait(Path("goneon.png")), QString());

  JQImageStitching stitcher;
  const std::vector<cv::Mat> frames = driver.Frames();
  for (std::size_t i = 0; i < frames.size(); ++i) {
    if (i == before.size()) {
      const cv::Point corner = stitcher.GetPlacedBounds().tl();
      QVERIFY(
          stitcher.ContinueAt(corner + cv::Point(place.x() - bounds.x(), place.y() - bounds.y())));
    }
    _tagJQIMG record = jqhost::MakeRecord(frames[i]);
    stitcher.Stitching(&record, 0, 1, 8);
  }
  QVERIFY(IsSamePicture(Read("goneon.png"), stitcher.GetMosaic()(stitcher.GetPlacedBounds())));
}

void SessionTest::findsTheLostFrame() {
  SessionDriver driver;
  driver.StartRun();
  driver.Move(Qt::Key_Right, 30);
  // Dragged back to the first frame at once, which nothing tells the stitcher.
  const auto steps = static_cast<int>(driver.Report().lastPlaced.x());
  QVERIFY(steps > 240);
  driver.DragStage(QPoint(-qRound(290 / driver.PadPixel()), 0));
  QTRY_VERIFY2(driver.Report().state == LiveState::kLost, Why(driver));
  QTest::qWait(100);
  QVERIFY2(driver.Report().state == LiveState::kLost, Why(driver));
  QVERIFY(driver.Report().notice.isEmpty());
  driver.Window().Action("find")->trigger();
  QTRY_VERIFY(driver.Report().notice.startsWith("Found"));
  QTRY_VERIFY2(driver.Report().state != LiveState::kLost, Why(driver));
  driver.DropStage();
  const int placed = driver.Report().path.size();
  driver.Move(Qt::Key_Down, 8);
  QVERIFY(driver.Report().path.size() > placed);
  // Placed truly: the ground below the first frame is where the slide has it.
  const QPoint corner = driver.Report().lastPlaced.topLeft();
  QVERIFY(corner.y() > 20 && qAbs(corner.x()) < 60);
}

void SessionTest::viewByKeysAndMouse() {
  SessionDriver driver;
  jqscope::MosaicView& view = driver.Window().View();
  driver.StartRun();
  driver.Move(Qt::Key_Right, 10);
  driver.Key(Qt::Key_1);
  QVERIFY(qAbs(view.Scale() * view.devicePixelRatioF() - 1.0) < 1e-9);
  QVERIFY(view.IsFollowing());
  driver.Key(Qt::Key_Plus);
  QVERIFY(qAbs(view.Scale() * view.devicePixelRatioF() - 1.25) < 1e-9);
  const QPointF held = view.Transform().ToMosaic(QPointF(100, 80));
  QTest::mousePress(&view, Qt::LeftButton, Qt::NoModifier, QPoint(100, 80));
  QTest::mouseMove(&view, QPoint(160, 90));
  QMouseEvent move(QEvent::MouseMove, QPointF(160, 90), view.mapToGlobal(QPoint(160, 90)),
                   Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&view, &move);
  QTest::mouseRelease(&view, Qt::LeftButton, Qt::NoModifier, QPoint(160, 90));
  const QPointF now = view.Transform().ToMosaic(QPointF(160, 90));
  QVERIFY(qAbs(now.x() - held.x()) < 1e-6 && qAbs(now.y() - held.y()) < 1e-6);
  QVERIFY(!view.IsFollowing());
  driver.Key(Qt::Key_C);
  QVERIFY(view.IsFollowing());
  QTest::mouseDClick(&view, Qt::LeftButton);
  QVERIFY(view.Visible().contains(QRectF(driver.Report().bounds)));
  driver.Key(Qt::Key_C, Qt::ControlModifier);
  const QImage copied = QApplication::clipboard()->image();
  QCOMPARE(copied.size(), view.size() * view.devicePixelRatioF());
}

void SessionTest::everyActionCanBeReached() {
  SessionDriver driver;
  QStringList keys;
  for (const QAction* action : driver.Window().findChildren<QAction*>()) {
    if (action->property("drawing").isNull()) continue;
    const QByteArray name = action->objectName().toUtf8();
    QVERIFY2(!action->shortcut().isEmpty(), name);
    QVERIFY2(!action->icon().isNull(), name);
    QVERIFY2(!action->toolTip().isEmpty() && !action->statusTip().isEmpty(), name);
    keys << action->shortcut().toString();
  }
  QVERIFY(keys.size() > 20);
  QCOMPARE(keys.removeDuplicates(), 0);
  for (const QWidget* widget : driver.Window().findChildren<QWidget*>()) {
    if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible()) continue;
    if (QByteArray(widget->metaObject()->className()).startsWith("Q")) continue;
    QVERIFY2(!widget->accessibleName().isEmpty(), widget->metaObject()->className());
  }
}

QTEST_MAIN(SessionTest)
#include "session_test.moc"
