#include "window/camera_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QThread>

#include "host/source/genicam_source.h"
#include "source/camera_name.h"
#include "source/local_path.h"

namespace jqscope {
namespace {

QString ModeText(const jqhost::CameraMode& mode) {
  const QString size = CameraDialog::tr("%1 × %2").arg(mode.size.width).arg(mode.size.height);
  return mode.rate > 0 ? CameraDialog::tr("%1, up to %2 frames a second").arg(size).arg(mode.rate)
                       : size;
}

}  // namespace

CameraDialog::CameraDialog(const QString& before, QWidget* parent)
    : QDialog(parent),
      m_camera(new QComboBox),
      m_mode(new QComboBox),
      m_hint(new QLabel(tr("Looking for cameras…"))),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel)) {
  setWindowTitle(tr("Camera"));
  m_camera->setObjectName("camera");
  m_camera->setEditable(true);
  m_camera->setInsertPolicy(QComboBox::NoInsert);
  m_camera->setToolTip(
      tr("Choose one, or give a number (0 is the first), the address of a stream, or "
         "genicam:NAME"));
  m_mode->setObjectName("mode");
  m_mode->setToolTip(tr("What the camera is asked for; it may give the next best"));
  m_hint->setWordWrap(true);
  auto* form = new QFormLayout(this);
  form->addRow(tr("&Camera"), m_camera);
  form->addRow(tr("&Size and rate"), m_mode);
  form->addRow(m_hint);
  form->addRow(m_buttons);
  connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(m_camera, &QComboBox::editTextChanged, this, &CameraDialog::CheckText);
  connect(m_camera, QOverload<int>::of(&QComboBox::activated), this, &CameraDialog::OfferModes);
  resize(520, 160);
  const bool wasCamera = ParseCameraName(ToLocalPath(before)).has_value();
  m_camera->setEditText(wasCamera ? before : "0");
  OfferModes();
  Look();
}

CameraDialog::~CameraDialog() {
  m_looking->wait();
}

void CameraDialog::Look() {
  m_found = std::make_shared<Found>();
  m_looking = QThread::create([found = m_found] {
    found->cameras = jqhost::ListCameras();
    found->genicam = jqhost::ListGenicamCameras();
  });
  m_looking->setParent(this);
  connect(m_looking, &QThread::finished, this, [this] { Offer(*m_found); });
  m_looking->start();
}

void CameraDialog::Offer(const Found& found) {
  m_offered = found;
  const QString given = m_camera->currentText();
  m_camera->clear();
  for (const jqhost::CameraInfo& camera : found.cameras) {
    m_camera->addItem(
        tr("%1: %2").arg(camera.number).arg(QString::fromLocal8Bit(camera.name.c_str())),
        QString::number(camera.number));
  }
  for (const std::string& name : found.genicam) {
    const QString text = "genicam:" + QString::fromLocal8Bit(name.c_str());
    m_camera->addItem(text, text);
  }
  const bool any = m_camera->count() > 0;
  m_hint->setText(any ? QString()
                      : tr("No camera was found. Give the address of a stream, or use the "
                           "simulated microscope."));
  const int same = m_camera->findData(given);
  m_camera->setCurrentIndex(same);
  if (same < 0) m_camera->setEditText(given);
  OfferModes();
}

void CameraDialog::OfferModes() {
  m_mode->clear();
  m_mode->addItem(tr("as the camera has it"));
  const int index = m_camera->currentIndex();
  if (index < 0 || index >= static_cast<int>(m_offered.cameras.size())) return;
  for (const jqhost::CameraMode& mode : m_offered.cameras[static_cast<std::size_t>(index)].modes) {
    CameraName asked;
    asked.mode = mode;
    m_mode->addItem(ModeText(mode), QString::fromStdString(CameraText(asked)));
  }
}

void CameraDialog::CheckText() {
  m_buttons->button(QDialogButtonBox::Ok)->setEnabled(!Chosen().isEmpty());
}

QString CameraDialog::Chosen() const {
  const int index = m_camera->currentIndex();
  const bool isItem = index >= 0 && m_camera->itemText(index) == m_camera->currentText();
  const QString camera = isItem ? m_camera->itemData(index).toString() : m_camera->currentText();
  // The mode's data is "@1280x720@30".
  const QString text = camera.trimmed() + (isItem ? m_mode->currentData().toString() : QString());
  return ParseCameraName(ToLocalPath(text)) ? text : QString();
}

}  // namespace jqscope
