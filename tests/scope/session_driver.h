#ifndef JQ_TESTS_SCOPE_SESSION_DRIVER_H
#define JQ_TESTS_SCOPE_SESSION_DRIVER_H

#include <QPoint>
#include <Qt>
#include <memory>
#include <mutex>
#include <opencv2/core.hpp>
#include <vector>

#include "window/main_window.h"

/// A window on the simulated microscope, driven as a person does, who looks before each
/// next step. Keeps the frames that the stitcher got.
class SessionDriver {
 public:
  explicit SessionDriver(jqscope::Options options = FreshOptions(),
                         cv::Size frame = cv::Size(320, 240), cv::Size slide = cv::Size(1200, 900));
  ~SessionDriver();

  static jqscope::Options FreshOptions();

  jqscope::MainWindow& Window() { return *m_window; }
  const jqscope::RunReport& Report() const { return m_window->Report(); }

  /// Presses and lets go of a key.
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  /// Moves the stage by so many key presses, and waits after each until a frame taken
  /// since was judged.
  void Move(Qt::Key arrow, int presses, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  /// Drags the field of view over the stage pad, so many of its pixels from where it was
  /// taken hold of, and waits for a frame. The first call takes hold, `DropStage` lets go.
  void DragStage(QPoint from);
  void DropStage();
  /// Pixels of the slide for one of the pad.
  double PadPixel() const;
  /// Waits until three more frames were judged. The first may have been in hand at the
  /// call, the second may have been waiting; the third was taken later.
  void WaitForFrame();
  /// F5, and waits for the first frame.
  void StartRun();
  /// Saves as `path` and waits for it. @return the problem, empty when there was none
  QString SaveAndWait(const QString& path);
  /// Waits for all that was asked of the stitching thread.
  void WaitForStitcher();

  /// The frames handed to the stitcher since the run began.
  std::vector<cv::Mat> Frames() const;

 private:
  bool m_dragging = false;
  mutable std::mutex m_mutex;
  std::vector<cv::Mat> m_frames;
  std::unique_ptr<jqscope::MainWindow> m_window;  // last: its threads use the others
};

/// The placed part of the mosaic that the library alone makes of these frames.
cv::Mat StitchByLibrary(const std::vector<cv::Mat>& frames, int overlapMode = 0,
                        int detectLevel = 1, int cornerBudget = 8);

/// Whether two pictures are the same, pixel by pixel.
bool IsSamePicture(const cv::Mat& a, const cv::Mat& b);

#endif  // JQ_TESTS_SCOPE_SESSION_DRIVER_H
