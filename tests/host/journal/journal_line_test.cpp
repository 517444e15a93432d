#include <gtest/gtest.h>

#include "host/input_error.h"
#include "host/journal/crc32.h"
#include "host/journal/journal_line.h"

namespace jqhost_test {
namespace {

// The check value that catalogues of CRCs give, and that of nothing.
TEST(Crc32, KnownValues) {
  EXPECT_EQ(jqhost::Crc32("123456789", 9), 0xCBF43926u);
  EXPECT_EQ(jqhost::Crc32("", 0), 0u);
}

TEST(JournalLine, EveryChangedBitIsFound) {
  const std::string whole = jqhost::EncodeLine({{"entry", "undo"}, {"number", 17}});
  ASSERT_EQ(whole.back(), '\n');
  const std::string line = whole.substr(0, whole.size() - 1);
  EXPECT_EQ(line.substr(8), " {\"entry\":\"undo\",\"number\":17}");
  EXPECT_EQ(jqhost::DecodeLine(line)["number"], 17);
  for (std::size_t i = 0; i < line.size(); ++i) {
    for (int bit = 0; bit < 8; ++bit) {
      std::string changed = line;
      changed[i] = static_cast<char>(changed[i] ^ (1 << bit));
      // A digit's other case is the same number.
      if (i < 8 && std::tolower(changed[i]) == std::tolower(line[i])) continue;
      EXPECT_THROW(jqhost::DecodeLine(changed), jqhost::InputError) << i << " " << bit;
    }
  }
  for (std::size_t size = 0; size < line.size(); ++size) {
    EXPECT_THROW(jqhost::DecodeLine(line.substr(0, size)), jqhost::InputError) << size;
  }
}

}  // namespace
}  // namespace jqhost_test
