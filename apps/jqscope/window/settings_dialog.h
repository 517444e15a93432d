#ifndef JQSCOPE_WINDOW_SETTINGS_DIALOG_H
#define JQSCOPE_WINDOW_SETTINGS_DIALOG_H

#include <QDialog>

#include "settings/preferences.h"

class QComboBox;
class QLineEdit;
class QSpinBox;
class QTableWidget;

namespace jqscope {

/// How frames are judged, and the objectives with their pixel sizes. Counts from the next
/// run on, but for the objective in use.
class SettingsDialog : public QDialog {
  Q_OBJECT

 public:
  explicit SettingsDialog(const Preferences& preferences, QWidget* parent = nullptr);
  Preferences Chosen() const;

 private:
  void AddObjective(const Objective& objective);
  QWidget* ObjectivePart();

  const Preferences m_before;
  QComboBox* m_mode;
  QSpinBox *m_level, *m_budget;
  QSpinBox* m_memory;
  QComboBox* m_journal;
  QTableWidget* m_objectives;
};

}  // namespace jqscope

#endif  // JQSCOPE_WINDOW_SETTINGS_DIALOG_H
