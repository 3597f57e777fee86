#include "cleaners/listed_names.h"

#include <gtest/gtest.h>

#include "platform/wide_system.h"

using namespace cleaners;
using namespace platform;

TEST(IsListed, FindsANameWhoseBlanksAtTheEndsAreTakenAway) {
  const std::vector<WideText> names = {u".", u"..", u"Temp", u"a b", u" padded "};
  const struct {
    const char16_t* name;
    bool listed;
  } rows[] = {
      {u".", true},
      {u"..", true},
      {u"Temp", true},
      {u"  Temp", true},
      {u"Temp  ", true},
      {u" Temp ", true},
      {u"a b", true},
      {u" . ", true},
      {u"temp", false},
      {u"TEMP", false},
      {u"Tem", false},
      {u"Temps", false},
      {u"...", false},
      {u"a  b", false},
      {u"", false},
      {u" ", false},
      {u"\tTemp", false},
      // Only the name loses its blanks, not the entry.
      {u" padded ", false},
      {u"padded", false},
  };
  for (const auto& row : rows) EXPECT_EQ(IsListed(names, row.name), row.listed) << testing::PrintToString(row.name);
}

TEST(IsListed, FindsNothingInAnEmptyList) {
  EXPECT_FALSE(IsListed({}, u"."));
  EXPECT_FALSE(IsListed({}, u""));
}

TEST(IsListed, FindsAnEmptyEntryByABlankName) { EXPECT_TRUE(IsListed({u"a", u""}, u"  ")); }

TEST(IsListed, FindsTheLastOfManyNames) {
  std::vector<WideText> names;
  for (int number = 0; number < 5000; ++number) names.push_back(Widen("folder " + std::to_string(number)));
  EXPECT_TRUE(IsListed(names, u"folder 4999"));
  EXPECT_FALSE(IsListed(names, u"folder 5000"));
}
