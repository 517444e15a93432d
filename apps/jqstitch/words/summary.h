#ifndef JQSTITCH_WORDS_SUMMARY_H
#define JQSTITCH_WORDS_SUMMARY_H

#include <string>

#include "host/record/run_record.h"

namespace jqstitch {

/// "All placed: 12 of 12 frames" and the like.
std::string OutcomeText(const jqhost::RunRecord& record);

/// The summary for people: every frame with its verdict and reason, the advice
/// once per kind of trouble, the position errors, the picture. Many lines.
std::string SummaryText(const jqhost::RunRecord& record);

}  // namespace jqstitch

#endif  // JQSTITCH_WORDS_SUMMARY_H
