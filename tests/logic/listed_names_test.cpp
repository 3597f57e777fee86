#include "cleaners/listed_names.h"

#include <gtest/gtest.h>

using namespace cleaners;

TEST(IsListed, FindsANameWhoseBlanksAtTheEndsAreTakenAway) {
  const std::vector<std::string> names = {".", "..", "Temp", "a b", " padded "};
  const struct {
    const char* name;
    bool listed;
  } rows[] = {
      {".", true},
      {"..", true},
      {"Temp", true},
      {"  Temp", true},
      {"Temp  ", true},
      {" Temp ", true},
      {"a b", true},
      {" . ", true},
      {"temp", false},
      {"TEMP", false},
      {"Tem", false},
      {"Temps", false},
      {"...", false},
      {"a  b", false},
      {"", false},
      {" ", false},
      {"\tTemp", false},
      // Only the name loses its blanks, not the entry.
      {" padded ", false},
      {"padded", false},
  };
  for (const auto& row : rows) EXPECT_EQ(IsListed(names, row.name), row.listed) << "[" << row.name << "]";
}

TEST(IsListed, FindsNothingInAnEmptyList) {
  EXPECT_FALSE(IsListed({}, "."));
  EXPECT_FALSE(IsListed({}, ""));
}

TEST(IsListed, FindsAnEmptyEntryByABlankName) { EXPECT_TRUE(IsListed({"a", ""}, "  ")); }

TEST(IsListed, FindsTheLastOfManyNames) {
  std::vector<std::string> names;
  for (int i = 0; i < 5000; ++i) names.push_back("folder " + std::to_string(i));
  EXPECT_TRUE(IsListed(names, "folder 4999"));
  EXPECT_FALSE(IsListed(names, "folder 5000"));
}
