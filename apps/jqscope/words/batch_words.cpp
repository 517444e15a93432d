#include "words/batch_words.h"

#include <QCoreApplication>

#include "words/guidance.h"

namespace jqscope {
namespace {

struct BatchWords {
  Q_DECLARE_TR_FUNCTIONS(Batch)
};

QString SizeText(cv::Size size) {
  return BatchWords::tr("%1 × %2").arg(size.width).arg(size.height);
}

}  // namespace

QString BatchSentence(const RunReport& report) {
  const BatchReport& batch = *report.batch;
  if (report.phase == RunPhase::kBatch) {
    return batch.stitching == 0 ? BatchWords::tr("Looking at the files")
                                : BatchWords::tr("Stitching the files: %1 of %2")
                                      .arg(batch.done)
                                      .arg(batch.stitching);
  }
  if (!batch.problem.isEmpty()) {
    return BatchWords::tr("The files could not be stitched: %1").arg(batch.problem);
  }
  const int placed = static_cast<int>(report.path.size());
  if (batch.stopped) {
    return BatchWords::tr("Stopped: %1 of %2 files are in the picture")
        .arg(placed)
        .arg(batch.files);
  }
  return placed == 0 ? BatchWords::tr("None of the files could be used")
                     : BatchWords::tr("Done: %1 of %2 files are in the picture; save it")
                           .arg(placed)
                           .arg(batch.files);
}

QString FileName(const jqhost::FrameResult& result) {
  const QString name = QString::fromLocal8Bit(result.name.c_str());
  return name.mid(name.lastIndexOf('/') + 1);
}

QString LeftOutText(const jqhost::FrameResult& result) {
  QString why = CauseWord(result.cause);
  if (result.cause == jqhost::Cause::kSizeDiffers) {
    why +=
        BatchWords::tr(" (%1 instead of %2)").arg(SizeText(result.size), SizeText(result.expected));
  } else if (!result.detail.empty()) {
    why += " (" + QString::fromLocal8Bit(result.detail.c_str()) + ")";
  }
  return FileName(result) + ": " + why;
}

}  // namespace jqscope
