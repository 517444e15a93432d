#include "host/journal/journal_line.h"

#include <charconv>
#include <cstdio>

#include "host/input_error.h"
#include "host/journal/crc32.h"

using nlohmann::json;

namespace jqhost {
namespace {

constexpr std::size_t kDigits = 8;

}  // namespace

std::string EncodeLine(const json& object) {
  // Names of files are bytes of any kind; what is no UTF-8 is shown by a stand-in.
  const std::string text = object.dump(-1, ' ', false, json::error_handler_t::replace);
  char crc[kDigits + 2];
  std::snprintf(crc, sizeof crc, "%08x ", Crc32(text.data(), text.size()));
  return crc + text + "\n";
}

json DecodeLine(std::string_view line) {
  std::uint32_t crc = 0;
  const char* digits = line.data();
  if (line.size() <= kDigits || line[kDigits] != ' ' ||
      std::from_chars(digits, digits + kDigits, crc, 16).ptr != digits + kDigits) {
    throw InputError("it does not begin with a CRC");
  }
  const std::string_view text = line.substr(kDigits + 1);
  if (Crc32(text.data(), text.size()) != crc) throw InputError("its CRC does not match");
  json object = json::parse(text.begin(), text.end(), nullptr, false);
  if (!object.is_object()) throw InputError("it is no JSON object");
  return object;
}

}  // namespace jqhost
