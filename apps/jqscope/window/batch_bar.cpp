#include "window/batch_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>

namespace jqscope {
namespace {

constexpr int kMostRowsInView = 6;

QStringList Remarks(const BatchReport& batch) {
  QStringList remarks = batch.leftOut;
  for (const QString& name : batch.doubtful) {
    remarks << BatchBar::tr("%1: in the picture, but its place is doubtful").arg(name);
  }
  return remarks;
}

}  // namespace

BatchBar::BatchBar(QWidget* parent)
    : QFrame(parent),
      m_progress(new QProgressBar),
      m_cancel(new QPushButton(tr("Canc&el"))),
      m_close(new QPushButton(tr("C&lose the list"))),
      m_sentence(new QLabel),
      m_files(new QListWidget) {
  setObjectName("batch");
  setFrameShape(QFrame::StyledPanel);
  setAccessibleName(tr("Batch of files"));
  m_progress->setAccessibleName(tr("Files stitched"));
  m_cancel->setObjectName("cancelBatch");
  m_cancel->setToolTip(tr("End the batch after the file in hand; what is placed stays (F6)"));
  m_close->setToolTip(tr("Hide the list of files that are not in the picture"));
  m_files->setAccessibleName(tr("Files that are not in the picture, and why"));
  m_files->setObjectName("leftOut");
  auto* column = new QVBoxLayout(this);
  auto* row = new QHBoxLayout;
  row->addWidget(m_sentence, 1);
  row->addWidget(m_progress, 1);
  row->addWidget(m_cancel);
  row->addWidget(m_close);
  column->addLayout(row);
  column->addWidget(m_files);
  connect(m_cancel, &QPushButton::clicked, this, &BatchBar::cancelled);
  connect(m_close, &QPushButton::clicked, this, [this] {
    m_dismissed = true;
    hide();
  });
  hide();
}

void BatchBar::Show(const RunReport& report) {
  const bool going = report.phase == RunPhase::kBatch;
  if (going) m_dismissed = false;
  const QStringList remarks = report.batch ? Remarks(*report.batch) : QStringList();
  setVisible(report.batch && !m_dismissed && (going || !remarks.isEmpty()));
  if (!report.batch) return;
  m_progress->setVisible(going);
  m_cancel->setVisible(going);
  m_close->setVisible(!going);
  // While the files are looked at, nobody knows how many will be stitched.
  m_progress->setMaximum(report.batch->stitching);
  m_progress->setValue(report.batch->done);
  Say(going ? tr("Batch") : tr("Files to look at: %1").arg(remarks.size()));
  m_files->setVisible(!remarks.isEmpty());
  if (m_files->count() == remarks.size()) return;
  m_files->clear();
  m_files->addItems(remarks);
  const int rows = std::min(kMostRowsInView, m_files->count());
  m_files->setFixedHeight(rows * std::max(1, m_files->sizeHintForRow(0)) +
                          2 * m_files->frameWidth());
}

void BatchBar::Say(const QString& sentence) {
  m_sentence->setText(sentence);
  setAccessibleDescription(sentence);
}

}  // namespace jqscope
