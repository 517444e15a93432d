#include "host/journal/json_fields.h"

#include <cmath>
#include <limits>

#include "host/input_error.h"

using nlohmann::json;

namespace jqhost {
namespace {

[[noreturn]] void Fail(const char* name, const std::string& what) {
  throw InputError("its field \"" + std::string(name) + "\" " + what);
}

std::int64_t Whole(const json& value, const char* name, std::int64_t least, std::int64_t most) {
  if (!value.is_number_integer()) Fail(name, "is no whole number");
  // A larger unsigned number would come out negative.
  const bool tooLarge = value.is_number_unsigned() &&
                        value.get<std::uint64_t>() > static_cast<std::uint64_t>(INT64_MAX);
  const std::int64_t number = tooLarge ? INT64_MAX : value.get<std::int64_t>();
  if (tooLarge || number < least || number > most) {
    Fail(name, "is " + value.dump() + ", outside " + std::to_string(least) + " to " +
                   std::to_string(most));
  }
  return number;
}

}  // namespace

const json& Field(const json& object, const char* name) {
  const auto found = object.find(name);
  if (found == object.end()) Fail(name, "is missing");
  return *found;
}

std::int64_t WholeField(const json& object, const char* name, std::int64_t least,
                        std::int64_t most) {
  return Whole(Field(object, name), name, least, most);
}

std::vector<int> ListField(const json& object, const char* name, int least, int most) {
  const json& value = Field(object, name);
  if (!value.is_array()) Fail(name, "is no list");
  std::vector<int> list;
  for (const json& number : value) {
    list.push_back(static_cast<int>(Whole(number, name, least, most)));
  }
  return list;
}

cv::Point PairField(const json& object, const char* name, int least, int most) {
  const std::vector<int> pair = ListField(object, name, least, most);
  if (pair.size() != 2) Fail(name, "is no pair of numbers");
  return cv::Point(pair[0], pair[1]);
}

bool FlagField(const json& object, const char* name) {
  const json& value = Field(object, name);
  if (!value.is_boolean()) Fail(name, "is neither true nor false");
  return value.get<bool>();
}

std::string TextField(const json& object, const char* name) {
  const json& value = Field(object, name);
  if (!value.is_string()) Fail(name, "is no text");
  return value.get<std::string>();
}

double NumberField(const json& object, const char* name) {
  const json& value = Field(object, name);
  if (!value.is_number() || !std::isfinite(value.get<double>())) Fail(name, "is no number");
  return value.get<double>();
}

float NumberOrNan(const json& object, const char* name) {
  if (Field(object, name).is_null()) return std::numeric_limits<float>::quiet_NaN();
  return static_cast<float>(NumberField(object, name));
}

}  // namespace jqhost
