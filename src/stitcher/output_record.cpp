#include "stitcher/output_record.h"

namespace jqstitching {

void FillRecord(_tagJQIMG& record, const _tagJQIMG& host, const cv::Mat& picture) {
  record = host;
  record.width = static_cast<std::uint16_t>(picture.cols);
  record.height = static_cast<std::uint16_t>(picture.rows);
  record.channels = 3;
  record.bytesPerChannel = 1;
  record.format = 0;
  record.bytesPerLine = record.width * 3;
  record.bufferSize =
      static_cast<std::uint32_t>(record.height) * static_cast<std::uint32_t>(record.bytesPerLine);
  record.pixels = picture.data;
}

}  // namespace jqstitching
