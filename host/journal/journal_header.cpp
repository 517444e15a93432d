#include "host/journal/journal_header.h"

#include <filesystem>

#include "host/input_error.h"
#include "host/journal/journal_line.h"
#include "host/journal/json_fields.h"

namespace fs = std::filesystem;
using nlohmann::json;

namespace jqhost {
namespace {

constexpr char kKind[] = "jqstitch journal";

std::string Absolute(const std::string& path) {
  std::error_code error;
  const fs::path absolute = fs::weakly_canonical(path, error);
  return error ? path : absolute.string();
}

}  // namespace

std::vector<std::string> AbsoluteSource(const std::vector<std::string>& source) {
  std::vector<std::string> absolute;
  for (const std::string& word : source) {
    std::error_code error;
    absolute.push_back(fs::exists(word, error) ? Absolute(word) : word);
  }
  return absolute;
}

JournalHeader MakeHeader(const StitchSettings& stitch, const PreparationSettings& preparation,
                         int every, const std::vector<std::string>& source) {
  JournalHeader header;
  header.library = JQHOST_LIBRARY_VERSION;
  header.stitch = stitch;
  header.preparation = preparation;
  if (!preparation.flat.empty()) header.preparation.flat = Absolute(preparation.flat);
  if (!preparation.dark.empty()) header.preparation.dark = Absolute(preparation.dark);
  header.every = every;
  header.source = AbsoluteSource(source);
  return header;
}

std::string HeaderLine(const JournalHeader& header) {
  return EncodeLine({{"kind", kKind},
                     {"format", kJournalFormat},
                     {"library", header.library},
                     {"overlapMode", header.stitch.overlapMode},
                     {"detectLevel", header.stitch.detectLevel},
                     {"cornerBudget", header.stitch.cornerBudget},
                     {"usePresets", header.stitch.usePresets},
                     {"depth", header.preparation.depth},
                     {"flat", header.preparation.flat},
                     {"dark", header.preparation.dark},
                     {"every", header.every},
                     {"source", header.source}});
}

JournalHeader ReadHeader(const std::string& text) {
  if (text.empty() || text.back() != '\n') {
    throw InputError("it is cut short: the run ended before it had recorded anything");
  }
  const json object = DecodeLine(std::string_view(text).substr(0, text.size() - 1));
  if (TextField(object, "kind") != kKind) throw InputError("it is no header of a journal");
  const std::int64_t format = WholeField(object, "format", 1, INT_MAX);
  const std::string library = TextField(object, "library");
  if (format != kJournalFormat) {
    throw InputError("it is of format " + std::to_string(format) + ", written by version " +
                     library + "; this program knows format " + std::to_string(kJournalFormat) +
                     " (use the version that wrote it)");
  }
  JournalHeader header;
  header.library = library;
  header.stitch.overlapMode = static_cast<int>(WholeField(object, "overlapMode", 0, 1));
  header.stitch.detectLevel = static_cast<int>(WholeField(object, "detectLevel", 1, 65535));
  header.stitch.cornerBudget = static_cast<int>(WholeField(object, "cornerBudget", 0, 1000000));
  header.stitch.usePresets = FlagField(object, "usePresets");
  header.preparation.depth = static_cast<int>(WholeField(object, "depth", 0, 16));
  if (header.preparation.depth != kFindDepth && !IsSampleDepth(header.preparation.depth)) {
    throw InputError("its field \"depth\" is no depth of samples");
  }
  header.preparation.flat = TextField(object, "flat");
  header.preparation.dark = TextField(object, "dark");
  header.every = static_cast<int>(WholeField(object, "every", 1, INT_MAX));
  const json& source = Field(object, "source");
  if (!source.is_array()) throw InputError("its field \"source\" is no list");
  for (const json& word : source) {
    if (!word.is_string()) throw InputError("its field \"source\" holds something else than texts");
    header.source.push_back(word.get<std::string>());
  }
  return header;
}

}  // namespace jqhost
