#include "scope/session_driver.h"

#include <QApplication>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>
#include <future>

#include "host/source/image_record.h"
#include "jqimagestitching.h"

namespace {

constexpr int kPatience = 20000;  // milliseconds

}  // namespace

jqscope::Options SessionDriver::FreshOptions() {
  jqscope::Options options;
  options.source = "microscope";
  options.fresh = true;
  return options;
}

SessionDriver::SessionDriver(jqscope::Options options, cv::Size frame, cv::Size slide) {
  options.microscope.frame = frame;
  options.microscope.scene = slide;
  options.microscope.framesPerSecond = 200;
  m_window = std::make_unique<jqscope::MainWindow>(options, nullptr);
  // Nobody is there to answer whether a picture may be lost.
  m_window->setProperty("discards", true);
  m_window->Work().Thread().Post([this](jqscope::RunDesk& desk) {
    desk.onStitched = [this](const jqhost::SourceFrame& taken) {
      const std::lock_guard<std::mutex> lock(m_mutex);
      m_frames.push_back(taken.image.clone());
    };
  });
  // Tests that compare with the frames alone go on by hand.
  m_window->Action("find")->trigger();
  m_window->show();
  m_window->activateWindow();
  (void)QTest::qWaitForWindowActive(m_window.get());
  (void)QTest::qWaitFor([this] { return Report().hasFrame; }, kPatience);
}

SessionDriver::~SessionDriver() = default;

void SessionDriver::Key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(m_window.get(), key, modifiers);
}

void SessionDriver::WaitForFrame() {
  const int before = Report().stitched;
  QVERIFY2(QTest::qWaitFor([&] { return Report().stitched >= before + 3; }, kPatience),
           "no frame came");
}

void SessionDriver::Move(Qt::Key arrow, int presses, Qt::KeyboardModifiers modifiers) {
  for (int i = 0; i < presses; ++i) {
    Key(arrow, modifiers);
    WaitForFrame();
  }
}

void SessionDriver::DragStage(QPoint from) {
  auto* pad = m_window->findChild<jqscope::StagePad*>();
  const QPoint middle = pad->rect().center();
  if (!m_dragging) QTest::mousePress(pad, Qt::LeftButton, Qt::NoModifier, middle);
  m_dragging = true;
  const QPoint at = middle + from;
  QMouseEvent move(QEvent::MouseMove, QPointF(at), pad->mapToGlobal(at), Qt::NoButton,
                   Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(pad, &move);
  WaitForFrame();
}

double SessionDriver::PadPixel() const {
  const auto* pad = m_window->findChild<jqscope::StagePad*>();
  const jqscope::Stage::State now = m_window->Work().Microscope().Now();
  return std::max(now.scene.width / (pad->width() - 2.0), now.scene.height / (pad->height() - 2.0));
}

void SessionDriver::DropStage() {
  auto* pad = m_window->findChild<jqscope::StagePad*>();
  QTest::mouseRelease(pad, Qt::LeftButton, Qt::NoModifier, pad->rect().center());
  m_dragging = false;
}

void SessionDriver::StartRun() {
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_frames.clear();
  }
  Key(Qt::Key_F5);
  QVERIFY2(QTest::qWaitFor([this] { return Report().stitched > 0; }, kPatience), "no run began");
}

QString SessionDriver::SaveAndWait(const QString& path) {
  QSignalSpy saved(m_window.get(), &jqscope::MainWindow::saved);
  m_window->SaveTo(path);
  if (saved.isEmpty() && !saved.wait(kPatience)) return "nothing was saved in time";
  return saved.first().at(1).toString();
}

void SessionDriver::WaitForStitcher() {
  std::promise<void> done;
  m_window->Work().Thread().Post([&done](jqscope::RunDesk&) { done.set_value(); });
  done.get_future().wait();
  QTest::qWait(0);
}

std::vector<cv::Mat> SessionDriver::Frames() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return m_frames;
}

cv::Mat StitchByLibrary(const std::vector<cv::Mat>& frames, int overlapMode, int detectLevel,
                        int cornerBudget) {
  JQImageStitching stitcher;
  for (const cv::Mat& frame : frames) {
    _tagJQIMG record = jqhost::MakeRecord(frame);
    stitcher.Stitching(&record, overlapMode, detectLevel, cornerBudget);
  }
  return stitcher.GetMosaic()(stitcher.GetPlacedBounds()).clone();
}

bool IsSamePicture(const cv::Mat& a, const cv::Mat& b) {
  return !a.empty() && a.size() == b.size() && a.type() == b.type() &&
         cv::norm(a, b, cv::NORM_INF) == 0;
}
