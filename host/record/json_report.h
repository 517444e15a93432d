#ifndef JQHOST_RECORD_JSON_REPORT_H
#define JQHOST_RECORD_JSON_REPORT_H

#include <nlohmann/json.hpp>
#include <string>

#include "host/record/words.h"

namespace jqhost {

/// One frame, as events and reports tell it.
nlohmann::json FrameJson(const RunRecord& record, const FrameResult& frame, const Words& words);

/// The position errors, without those of single frames.
nlohmann::json TruthJson(const TruthComparison& truth);

/// The run as a whole: how it ended, counts, picture, truth, notes.
nlohmann::json OutcomeJson(const RunRecord& record);

/// The whole report: outcome, settings and every frame.
nlohmann::json ReportJson(const RunRecord& record, const Words& words);

/// Text of a JSON document; bytes of file names that are no UTF-8 are replaced.
std::string JsonText(const nlohmann::json& document);

}  // namespace jqhost

#endif  // JQHOST_RECORD_JSON_REPORT_H
