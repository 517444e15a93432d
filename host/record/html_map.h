#ifndef JQHOST_RECORD_HTML_MAP_H
#define JQHOST_RECORD_HTML_MAP_H

#include <opencv2/core.hpp>
#include <string>

#include "host/record/run_record.h"

namespace jqhost {

/// The picture, small, with layers over it that can be switched: frames with their
/// numbers, their order, seams, and the places where the track was lost; of an assembly the
/// pairs in place of order and seams. The page's script zooms and pans it.
/// @param names one per frame
std::string HtmlMap(const RunRecord& record, const std::vector<std::string>& names,
                    const cv::Mat& picture);

}  // namespace jqhost

#endif  // JQHOST_RECORD_HTML_MAP_H
