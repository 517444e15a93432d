#ifndef JQSTITCH_REPORT_SUMMARY_H
#define JQSTITCH_REPORT_SUMMARY_H

#include <string>

#include "run/run_record.h"

namespace jqstitch {

/// "All placed: 12 of 12 frames" and the like.
std::string OutcomeText(const RunRecord& record);

/// The summary for people: every frame with its verdict and reason, the advice
/// once per kind of trouble, the position errors, the picture. Many lines.
std::string SummaryText(const RunRecord& record);

}  // namespace jqstitch

#endif  // JQSTITCH_REPORT_SUMMARY_H
