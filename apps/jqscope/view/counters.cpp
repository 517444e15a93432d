#include "view/counters.h"

#include <algorithm>

#include "host/system/free_memory.h"
#include "words/guidance.h"

namespace jqscope {
namespace {

QString Row(const QString& name, const QString& value) {
  return "<tr><td>" + name.toHtmlEscaped() + "&nbsp;&nbsp;</td><td align=right><b>" +
         value.toHtmlEscaped() + "</b></td></tr>";
}

QString MegaBytes(double bytes) {
  return QString::number(bytes / 1e6, 'f', 0) + " MB";
}

}  // namespace

Counters::Counters(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::RichText);
  setAlignment(Qt::AlignTop | Qt::AlignLeft);
  setAccessibleName(tr("Numbers of the run"));
}

void Counters::Show(const RunReport& report, double latency, std::size_t viewBytes) {
  QString text = "<table cellspacing=1 width='100%'>";
  text += Row(tr("Frames placed"), QString::number(report.Count(jqhost::Cause::kPlaced)));
  text +=
      Row(tr("Not yet far enough"), QString::number(report.Count(jqhost::Cause::kShiftTooSmall)));
  // Words that several causes share are counted together.
  std::map<QString, int> leftOut;
  for (const auto& [cause, count] : report.causes) {
    if (cause == jqhost::Cause::kPlaced || cause == jqhost::Cause::kShiftTooSmall) continue;
    leftOut[CauseWord(cause)] += count;
  }
  for (const auto& [word, count] : leftOut) {
    text += Row(tr("Left out, %1").arg(word), QString::number(count));
  }
  if (!report.batch) {
    text += Row(tr("Not taken in time"), QString::number(report.dropped));
    text += Row(tr("Frames a second"), QString::number(report.framesPerSecond, 'f', 1));
    text += Row(tr("Frame to screen"), QString::number(1000 * latency, 'f', 0) + " ms");
  }
  if (!report.bounds.isEmpty()) {
    text +=
        Row(tr("Picture"), tr("%1 × %2").arg(report.bounds.width()).arg(report.bounds.height()));
  }
  text +=
      Row(tr("Mosaic + view"), tr("%1 + %2 MB")
                                   .arg(static_cast<double>(report.mosaicBytes) / 1e6, 0, 'f', 0)
                                   .arg(static_cast<double>(viewBytes) / 1e6, 0, 'f', 0));
  if (report.mostMemory > 0) {
    const std::int64_t left = std::max<std::int64_t>(0, report.mostMemory - report.mosaicBytes);
    text += Row(tr("Left of the limit"), MegaBytes(static_cast<double>(left)));
  }
  const std::uint64_t free = jqhost::FreeMemory();
  if (free > 0) text += Row(tr("Memory left"), MegaBytes(static_cast<double>(free)));
  setText(text + "</table>");
}

}  // namespace jqscope
