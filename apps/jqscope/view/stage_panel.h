#ifndef JQSCOPE_VIEW_STAGE_PANEL_H
#define JQSCOPE_VIEW_STAGE_PANEL_H

#include <QWidget>

#include "source/stage.h"

class QSlider;

namespace jqscope {

/// The slide of the simulated microscope in small: drag the field of view over it.
class StagePad : public QWidget {
  Q_OBJECT

 public:
  /// @param stage must outlive the pad
  explicit StagePad(Stage& stage, QWidget* parent = nullptr);
  QSize sizeHint() const override { return QSize(220, 150); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  double PadScale(const Stage::State& now) const;

  Stage& m_stage;
  QPoint m_dragFrom;
  cv::Point m_cornerFrom;
};

/// The simulated microscope's stage and optics.
class StagePanel : public QWidget {
  Q_OBJECT

 public:
  explicit StagePanel(Stage& stage, QWidget* parent = nullptr);
  /// Moves the field of view by a share of itself.
  void Step(double across, double down);
  void Refresh();

 private:
  QSlider* AddSlider(const QString& name, const QString& tip, int most);
  void TakeSliders();

  Stage& m_stage;
  StagePad* m_pad;
  QSlider *m_noise = nullptr, *m_vignetting = nullptr, *m_blur = nullptr, *m_exposure = nullptr;
};

}  // namespace jqscope

#endif  // JQSCOPE_VIEW_STAGE_PANEL_H
