#include "host/record/html_text.h"

#include <QByteArray>
#include <cstdio>

namespace jqhost {

std::string Escape(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

std::string HtmlNumber(double value, int digits) {
  char text[48];
  std::snprintf(text, sizeof text, "%.*f", digits, value);
  return text;
}

std::string HtmlPair(cv::Point point) {
  return std::to_string(point.x) + "," + std::to_string(point.y);
}

std::string JpegSource(const std::vector<unsigned char>& bytes) {
  const QByteArray raw = QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()),
                                                 static_cast<int>(bytes.size()));
  return "data:image/jpeg;base64," + raw.toBase64().toStdString();
}

}  // namespace jqhost
