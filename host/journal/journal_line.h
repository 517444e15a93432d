#ifndef JQHOST_JOURNAL_JOURNAL_LINE_H
#define JQHOST_JOURNAL_JOURNAL_LINE_H

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace jqhost {

// The header and the log of a journal are lines of one form: eight hexadecimal digits,
// the CRC-32 of what follows the space, a space, one JSON object, a newline.
//
//   1c291ca3 {"entry":"undo","number":17}

/// The whole line with its newline.
std::string EncodeLine(const nlohmann::json& object);

/// The object of a line without its newline. Raises `InputError` saying what is wrong
/// with it: "its CRC does not match", "it is no JSON object", ...
nlohmann::json DecodeLine(std::string_view line);

}  // namespace jqhost

#endif  // JQHOST_JOURNAL_JOURNAL_LINE_H
