#include "view/stage_panel.h"

#include <QFormLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QSlider>
#include <algorithm>
#include <cmath>

namespace jqscope {

StagePad::StagePad(Stage& stage, QWidget* parent) : QWidget(parent), m_stage(stage) {
  setMinimumHeight(110);
  setCursor(Qt::OpenHandCursor);
  setAccessibleName(tr("Stage"));
  setToolTip(
      tr("Drag to move the stage. The arrow keys do the same; with Shift they take larger "
         "steps."));
}

double StagePad::PadScale(const Stage::State& now) const {
  return std::min((width() - 2.0) / now.scene.width, (height() - 2.0) / now.scene.height);
}

void StagePad::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Stage::State now = m_stage.Now();
  if (now.scene.empty()) return;
  const double scale = PadScale(now);
  const QRectF slide(0, 0, now.scene.width * scale, now.scene.height * scale);
  painter.fillRect(slide, palette().color(QPalette::Base));
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(slide);
  const QRectF view(now.corner.x * scale, now.corner.y * scale, now.frame.width * scale,
                    now.frame.height * scale);
  painter.fillRect(view, palette().color(QPalette::Highlight));
  painter.setPen(palette().color(QPalette::WindowText));
  painter.drawRect(view);
}

void StagePad::mousePressEvent(QMouseEvent* event) {
  m_dragFrom = event->pos();
  m_cornerFrom = m_stage.Now().corner;
}

void StagePad::mouseMoveEvent(QMouseEvent* event) {
  const Stage::State now = m_stage.Now();
  if (now.scene.empty()) return;
  const QPointF by = QPointF(event->pos() - m_dragFrom) / PadScale(now);
  m_stage.MoveTo(m_cornerFrom + cv::Point(cvRound(by.x()), cvRound(by.y())));
  update();
}

StagePanel::StagePanel(Stage& stage, QWidget* parent)
    : QWidget(parent), m_stage(stage), m_pad(new StagePad(stage)) {
  auto* form = new QFormLayout(this);
  form->setContentsMargins(0, 0, 0, 0);
  form->addRow(m_pad);
  m_noise = AddSlider(tr("Noise"), tr("Grain of the camera"), 20);
  m_vignetting = AddSlider(tr("Vignetting"), tr("Light lost in the corners, per cent"), 60);
  m_blur = AddSlider(tr("Defocus"), tr("Blur, tenths of a pixel"), 60);
  m_exposure = AddSlider(tr("Exposure drift"),
                         tr("Change of the exposure from frame to frame, per cent"), 30);
}

QSlider* StagePanel::AddSlider(const QString& name, const QString& tip, int most) {
  auto* slider = new QSlider(Qt::Horizontal);
  slider->setRange(0, most);
  slider->setToolTip(tip);
  slider->setAccessibleName(name);
  connect(slider, &QSlider::valueChanged, this, &StagePanel::TakeSliders);
  static_cast<QFormLayout*>(layout())->addRow(name, slider);
  return slider;
}

void StagePanel::TakeSliders() {
  jqhost::CameraEffects effects;
  effects.noise = m_noise->value();
  effects.vignetting = m_vignetting->value();
  effects.blur = m_blur->value() / 10.0;
  effects.exposure = m_exposure->value();
  m_stage.SetEffects(effects);
}

void StagePanel::Step(double across, double down) {
  const Stage::State now = m_stage.Now();
  m_stage.MoveBy(cv::Point(cvRound(across * now.frame.width), cvRound(down * now.frame.height)));
  Refresh();
}

void StagePanel::Refresh() {
  m_pad->update();
}

}  // namespace jqscope
