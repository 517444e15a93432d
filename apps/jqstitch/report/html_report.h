#ifndef JQSTITCH_REPORT_HTML_REPORT_H
#define JQSTITCH_REPORT_HTML_REPORT_H

#include <opencv2/core.hpp>
#include <string>

#include "run/run_record.h"

namespace jqstitch {

/// A page that needs no other file: outcome, the picture small with the frames
/// and their order drawn over it, and a table of the frames.
/// @param picture as saved; may be empty
std::string HtmlReport(const RunRecord& record, const cv::Mat& picture);

}  // namespace jqstitch

#endif  // JQSTITCH_REPORT_HTML_REPORT_H
