#include "automation/restore_label.h"

#include <gtest/gtest.h>

using namespace automation;

TEST(RestoreLabel, HasOneBlankFromTheNavigationAndTwoFromElsewhere) {
  EXPECT_EQ(RestoreLabelFromNavigation("F10"), "Restore : Shift + F10");
  EXPECT_EQ(RestoreLabel("F10"), "Restore :  Shift + F10");
}

TEST(RestoreLabel, TakesTheKeysTextAsItStands) {
  EXPECT_EQ(RestoreLabelFromNavigation(""), "Restore : Shift + ");
  EXPECT_EQ(RestoreLabel(" F1 "), "Restore :  Shift +  F1 ");
}
