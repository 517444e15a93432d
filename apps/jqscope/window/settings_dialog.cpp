#include "window/settings_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <algorithm>

namespace jqscope {
namespace {

constexpr std::int64_t kMegaByte = 1000000;

}  // namespace

SettingsDialog::SettingsDialog(const Preferences& preferences, QWidget* parent)
    : QDialog(parent),
      m_before(preferences),
      m_mode(new QComboBox),
      m_level(new QSpinBox),
      m_budget(new QSpinBox),
      m_memory(new QSpinBox),
      m_journal(new QComboBox),
      m_objectives(new QTableWidget(0, 2)) {
  setWindowTitle(tr("Settings"));
  auto* column = new QVBoxLayout(this);
  auto* run = new QGroupBox(tr("The next run"));
  auto* form = new QFormLayout(run);
  const jqhost::StitchSettings& stitch = preferences.run.stitch;
  m_mode->addItem(tr("compare the frame with the picture (overlap test, mode 0)"));
  m_mode->addItem(tr("wait until the stage stands still (motion test, mode 1)"));
  m_mode->setCurrentIndex(stitch.overlapMode);
  form->addRow(tr("A frame is fit when you"), m_mode);
  m_level->setRange(1, 7);
  m_level->setValue(stitch.detectLevel);
  m_level->setPrefix(tr("1/"));
  m_level->setToolTip(tr("1/1 keeps all pixels; 1/2 halves the picture's sides and is faster"));
  form->addRow(tr("Size of the picture (detection level)"), m_level);
  m_budget->setRange(0, 100);
  m_budget->setValue(stitch.cornerBudget);
  m_budget->setToolTip(tr("More corners are slower and surer"));
  form->addRow(tr("Effort to find matches (corner budget)"), m_budget);
  m_memory->setRange(0, 1000000);
  m_memory->setValue(static_cast<int>(preferences.run.mostMemory / kMegaByte));
  m_memory->setSuffix(tr(" MB"));
  m_memory->setSpecialValueText(tr("as large as the machine allows"));
  m_memory->setToolTip(tr("A frame for which the picture would have to grow beyond is left out"));
  form->addRow(tr("Largest picture in memory"), m_memory);
  m_journal->addItem(tr("no: a crash loses the run"));
  m_journal->addItem(tr("until the run has ended, to take it up after a crash"));
  m_journal->addItem(tr("for good"));
  m_journal->setCurrentIndex(static_cast<int>(preferences.journal));
  m_journal->setToolTip(tr("Each placed frame is written to the disk as it comes"));
  form->addRow(tr("Keep a journal"), m_journal);
  m_mode->setObjectName("overlapMode");
  m_level->setObjectName("detectLevel");
  m_budget->setObjectName("cornerBudget");
  m_memory->setObjectName("mostMemory");
  m_journal->setObjectName("keepJournal");
  column->addWidget(run);
  column->addWidget(ObjectivePart());
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  column->addWidget(buttons);
  resize(560, 480);
}

QWidget* SettingsDialog::ObjectivePart() {
  auto* box = new QGroupBox(tr("Objectives; the selected one is in use"));
  auto* column = new QVBoxLayout(box);
  m_objectives->setHorizontalHeaderLabels({tr("Name"), tr("Micrometres of a camera pixel")});
  m_objectives->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  m_objectives->setSelectionBehavior(QAbstractItemView::SelectRows);
  m_objectives->setSelectionMode(QAbstractItemView::SingleSelection);
  m_objectives->setAccessibleName(tr("Objectives"));
  for (const Objective& objective : m_before.objectives) AddObjective(objective);
  m_objectives->selectRow(m_before.objective);
  column->addWidget(m_objectives);
  auto* add = new QPushButton(tr("&Add an objective"));
  add->setObjectName("addObjective");
  connect(add, &QPushButton::clicked, this, [this] {
    AddObjective({tr("10×"), 0.5});
    m_objectives->selectRow(m_objectives->rowCount() - 1);
  });
  auto* remove = new QPushButton(tr("&Remove the selected one"));
  remove->setObjectName("removeObjective");
  connect(remove, &QPushButton::clicked, this, [this] {
    if (m_objectives->rowCount() > 1) m_objectives->removeRow(m_objectives->currentRow());
  });
  auto* row = new QHBoxLayout;
  row->addWidget(add);
  row->addWidget(remove);
  column->addLayout(row);
  return box;
}

void SettingsDialog::AddObjective(const Objective& objective) {
  const int row = m_objectives->rowCount();
  m_objectives->insertRow(row);
  m_objectives->setItem(row, 0, new QTableWidgetItem(objective.name));
  m_objectives->setItem(row, 1, new QTableWidgetItem(QString::number(objective.micrometres)));
}

Preferences SettingsDialog::Chosen() const {
  Preferences chosen = m_before;
  chosen.run.stitch.overlapMode = m_mode->currentIndex();
  chosen.run.stitch.detectLevel = m_level->value();
  chosen.run.stitch.cornerBudget = m_budget->value();
  chosen.run.mostMemory = m_memory->value() * kMegaByte;
  chosen.journal = static_cast<JournalKeeping>(m_journal->currentIndex());
  chosen.objectives.clear();
  for (int row = 0; row < m_objectives->rowCount(); ++row) {
    const QString number = m_objectives->item(row, 1)->text().replace(',', '.');
    chosen.objectives.append(
        {m_objectives->item(row, 0)->text(), std::clamp(number.toDouble(), 0.0, 1e6)});
  }
  chosen.objective = std::max(0, m_objectives->currentRow());
  return chosen;
}

}  // namespace jqscope
