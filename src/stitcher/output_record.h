#ifndef JQ_STITCHER_OUTPUT_RECORD_H
#define JQ_STITCHER_OUTPUT_RECORD_H

#include <opencv2/core.hpp>

#include "jqglobalclass.h"

namespace jqstitching {

/// Makes `record` describe `picture`: the host's own bytes are taken from
/// `host`, the size is cut to 16 bits, and the pixel pointer is the picture's.
void FillRecord(_tagJQIMG& record, const _tagJQIMG& host, const cv::Mat& picture);

}  // namespace jqstitching

#endif  // JQ_STITCHER_OUTPUT_RECORD_H
