#ifndef JQSTITCH_REPORT_JSON_REPORT_H
#define JQSTITCH_REPORT_JSON_REPORT_H

#include <nlohmann/json.hpp>
#include <string>

#include "run/run_record.h"

namespace jqstitch {

/// One frame, as events and reports tell it.
nlohmann::json FrameJson(const FrameResult& frame);

/// The position errors, without those of single frames.
nlohmann::json TruthJson(const TruthComparison& truth);

/// The outcome in numbers: counts, exit code, picture, truth, notes.
nlohmann::json OutcomeJson(const RunRecord& record);

/// The whole report: outcome, settings and every frame.
nlohmann::json ReportJson(const RunRecord& record);

/// Text of a JSON document; bytes of file names that are no UTF-8 are replaced.
std::string JsonText(const nlohmann::json& document);

}  // namespace jqstitch

#endif  // JQSTITCH_REPORT_JSON_REPORT_H
