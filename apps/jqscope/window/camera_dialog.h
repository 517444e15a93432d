#ifndef JQSCOPE_WINDOW_CAMERA_DIALOG_H
#define JQSCOPE_WINDOW_CAMERA_DIALOG_H

#include <QDialog>
#include <memory>
#include <vector>

#include "host/system/camera_list.h"

class QComboBox;
class QDialogButtonBox;
class QLabel;
class QThread;

namespace jqscope {

/// Asks for a camera: those that were found, with name, size and rate, or an address given
/// by hand. Looking for cameras may take a second and has a thread of its own.
class CameraDialog : public QDialog {
  Q_OBJECT

 public:
  /// @param before the source of last time, which is offered where it names a camera
  explicit CameraDialog(const QString& before, QWidget* parent = nullptr);
  /// Waits until nobody looks any more.
  ~CameraDialog() override;

  /// As `ParseCameraName` reads it; empty when nothing of use was given.
  QString Chosen() const;

  struct Found {
    std::vector<jqhost::CameraInfo> cameras;
    std::vector<std::string> genicam;
  };
  /// Offers these cameras.
  void Offer(const Found& found);

 private:
  void Look();
  void OfferModes();
  void CheckText();

  QComboBox *m_camera, *m_mode;
  QLabel* m_hint;
  QDialogButtonBox* m_buttons;
  Found m_offered;
  std::shared_ptr<Found> m_found;
  QThread* m_looking = nullptr;
};

}  // namespace jqscope

#endif  // JQSCOPE_WINDOW_CAMERA_DIALOG_H
