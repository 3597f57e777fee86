#include "automation/warning_text.h"

#include <gtest/gtest.h>

#include <string>

using namespace automation;

TEST(TheWarning, SaysItsThreeSentencesWithTheKeysInQuotesAndNothingAfterThem) {
  const std::string quote(1, 34);
  const std::string hide = quote + "Ctrl + H" + quote;
  const std::string unhide = quote + "Ctrl + U" + quote;
  EXPECT_EQ(kInvisibleWarning, "Clicking this button will make Quellix run invisibly. You can also press " + hide +
                                   " to hide. To unhide the application press " + unhide);
}
