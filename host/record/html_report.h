#ifndef JQHOST_RECORD_HTML_REPORT_H
#define JQHOST_RECORD_HTML_REPORT_H

#include <opencv2/core.hpp>
#include <string>

#include "host/record/words.h"

namespace jqhost {

/// A page that needs no other file: outcome, the picture small with the frames
/// and their order drawn over it, and a table of the frames.
/// @param picture as saved; may be empty
std::string HtmlReport(const RunRecord& record, const cv::Mat& picture, const Words& words);

}  // namespace jqhost

#endif  // JQHOST_RECORD_HTML_REPORT_H
