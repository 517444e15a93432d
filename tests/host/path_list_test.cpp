#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "host/source/path_list.h"

namespace jqhost_test {
namespace {

using Strings = std::vector<std::string>;

TEST(NaturalOrder, CountsLikePeople) {
  Strings paths = {"d/f10.png",
                   "d/f9.png",
                   "d/f1.png",
                   "d/F2.png",
                   "d/f02.png",
                   "d/f2b.png",
                   "d/f2a.png",
                   "d/\xc3\xa4"
                   "1.png"};
  jqhost::SortNaturally(paths);
  EXPECT_EQ(paths.front(),
            "d/\xc3\xa4"
            "1.png")
      << "a letter with a mark is still that letter";
  const auto place = [&](const std::string& path) {
    return std::find(paths.begin(), paths.end(), path) - paths.begin();
  };
  EXPECT_LT(place("d/f1.png"), place("d/f02.png"));
  EXPECT_LT(place("d/f02.png"), place("d/f2a.png"));
  EXPECT_LT(place("d/f2a.png"), place("d/f2b.png"));
  EXPECT_LT(place("d/f2b.png"), place("d/f9.png"));
  EXPECT_LT(place("d/f9.png"), place("d/f10.png"));
}

TEST(NaturalOrder, DoesNotDependOnTheOrderGiven) {
  // "f02" and "f2" count the same; their bytes decide.
  Strings one = {"f2", "f02", "f002"}, other = {"f002", "f2", "f02"};
  jqhost::SortNaturally(one);
  jqhost::SortNaturally(other);
  EXPECT_EQ(one, (Strings{"f002", "f02", "f2"}));
  EXPECT_EQ(one, other);
}

TEST(NaturalOrder, TellsAWildcardsOrder) {
  EXPECT_TRUE(jqhost::LooksSortedByBytes({"f1", "f10", "f2"}));
  EXPECT_FALSE(jqhost::LooksSortedByBytes({"f1", "f2", "f10"}));
  EXPECT_FALSE(jqhost::LooksSortedByBytes({"f01", "f02", "f10"}));
  EXPECT_FALSE(jqhost::LooksSortedByBytes({"a/f1", "b/f10", "b/f2"})) << "of two folders";
}

}  // namespace
}  // namespace jqhost_test
