#ifndef JQ_TESTS_SUPPORT_HOST_RECORD_H
#define JQ_TESTS_SUPPORT_HOST_RECORD_H

#include <cstring>
#include <opencv2/core.hpp>
#include <vector>

#include "jqglobalclass.h"

/// A camera frame as a host hands it over: the record and the buffer behind it.
/// Bytes that belong to the host carry a pattern, so that a lost one shows.
class HostRecord {
 public:
  /// `frame` is 8-bit or 16-bit with 1, 3 or 4 channels; `padding` is bytes behind
  /// each line.
  explicit HostRecord(const cv::Mat& frame, int padding = 0, unsigned char pattern = 0x5A) {
    const std::size_t row = frame.cols * frame.elemSize();
    m_buffer.assign((row + padding) * frame.rows, 0xEE);
    for (int r = 0; r < frame.rows; ++r)
      std::memcpy(&m_buffer[r * (row + padding)], frame.ptr(r), row);
    auto* bytes = reinterpret_cast<unsigned char*>(&m_record);
    for (std::size_t k = 0; k < sizeof m_record; ++k)
      bytes[k] = static_cast<unsigned char>(pattern + k * 7);
    m_record.width = static_cast<std::uint16_t>(frame.cols);
    m_record.height = static_cast<std::uint16_t>(frame.rows);
    m_record.bytesPerLine = static_cast<std::int32_t>(row + padding);
    m_record.format = 0;
    m_record.channels = static_cast<std::uint8_t>(frame.channels());
    m_record.bytesPerChannel = static_cast<std::uint8_t>(frame.elemSize1());
    m_record.bufferSize = static_cast<std::uint32_t>(m_buffer.size());
    m_record.pixels = m_buffer.data();
  }
  HostRecord(const HostRecord&) = delete;
  HostRecord& operator=(const HostRecord&) = delete;

  _tagJQIMG* get() { return &m_record; }
  _tagJQIMG* operator->() { return &m_record; }
  std::vector<unsigned char>& buffer() { return m_buffer; }

 private:
  _tagJQIMG m_record;
  std::vector<unsigned char> m_buffer;
};

#endif  // JQ_TESTS_SUPPORT_HOST_RECORD_H
