#ifndef JQHOST_JOURNAL_JSON_FIELDS_H
#define JQHOST_JOURNAL_JSON_FIELDS_H

#include <cstdint>
#include <nlohmann/json.hpp>
#include <opencv2/core.hpp>
#include <string>
#include <vector>

namespace jqhost {

// Reads fields of a JSON object that was written by another program, or changed since.
// Each raises `InputError` naming the field where it is missing, of another type, or
// outside its range.

const nlohmann::json& Field(const nlohmann::json& object, const char* name);
std::int64_t WholeField(const nlohmann::json& object, const char* name, std::int64_t least,
                        std::int64_t most);
/// Two whole numbers in a list, each of that range.
cv::Point PairField(const nlohmann::json& object, const char* name, int least, int most);
/// Any number of whole numbers in a list, each of that range.
std::vector<int> ListField(const nlohmann::json& object, const char* name, int least, int most);
bool FlagField(const nlohmann::json& object, const char* name);
std::string TextField(const nlohmann::json& object, const char* name);
/// A finite number.
double NumberField(const nlohmann::json& object, const char* name);
/// The same, or NaN for null.
float NumberOrNan(const nlohmann::json& object, const char* name);

}  // namespace jqhost

#endif  // JQHOST_JOURNAL_JSON_FIELDS_H
