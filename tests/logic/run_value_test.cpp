#include "automation/run_value.h"

#include <gtest/gtest.h>

using namespace automation;

TEST(RunValueName, IsTheProductItsMajorAndItsMinorVersion) { EXPECT_EQ(RunValueName(), "Quellix - 1.0"); }

TEST(RunValueData, IsFolderNameAndArgument) {
  EXPECT_EQ(RunValueData("C:\\Quellix\\Quellix.exe", "C:\\Quellix\\Quellix.exe"), "C:\\Quellix\\Quellix.exe m");
  EXPECT_EQ(RunValueData("D:\\a\\b.c\\d\\Quellix.exe", ""), "D:\\a\\b.c\\d\\Quellix.exe m");
}

TEST(RunValueData, IsOfAProgramUnderAnyName) {
  EXPECT_EQ(RunValueData("C:\\Tools\\Clean.exe", ""), "C:\\Tools\\Clean.exe m");
  EXPECT_EQ(RunValueData("C:\\Tools\\Clean.v1.exe", ""), "C:\\Tools\\Clean.v1.exe m");
  EXPECT_EQ(RunValueData("C:\\Tools\\CLEAN.EXE", ""), "C:\\Tools\\CLEAN.exe m");
  EXPECT_EQ(RunValueData("C:\\To.ols\\Clean", ""), "C:\\To.ols\\Clean.exe m");
}

TEST(RunValueData, OfAProgramInARootHasOneBackslash) {
  EXPECT_EQ(RunValueData("C:\\Quellix.exe", "C:\\Quellix.exe"), "C:\\Quellix.exe m");
}

TEST(RunValueData, OfAProgramOnAShareBeginsWithTheShare) {
  EXPECT_EQ(RunValueData("\\\\server\\tools\\Quellix.exe", ""), "\\\\server\\tools\\Quellix.exe m");
}

TEST(RunValueData, TakesTheShortFormOfAFolderWithABlank) {
  EXPECT_EQ(RunValueData("C:\\Program Files\\Quellix\\Quellix.exe", "C:\\PROGRA~1\\Quellix\\Quellix.exe"),
            "C:\\PROGRA~1\\Quellix\\Quellix.exe m");
  EXPECT_EQ(RunValueData("C:\\My Tools\\Quellix of mine.exe.exe", "C:\\MYTOOL~1\\QUELLI~1.EXE"),
            "C:\\MYTOOL~1\\QUELLI~1.exe m");
}

TEST(RunValueData, TakesTheShortFormOfANameWithABlank) {
  EXPECT_EQ(RunValueData("C:\\Tools\\Quellix of mine.exe", "C:\\Tools\\QUELLI~1.EXE"), "C:\\Tools\\QUELLI~1.exe m");
}

TEST(RunValueData, LeavesAPartWithoutABlankAsItIs) {
  // The short form of a name that is long in itself would hide what the value starts.
  EXPECT_EQ(RunValueData("C:\\Program Files\\QuellixThePrivacyCleaner.exe", "C:\\PROGRA~1\\QUELLI~1.EXE"),
            "C:\\PROGRA~1\\QuellixThePrivacyCleaner.exe m");
  EXPECT_EQ(RunValueData("C:\\PrivacyCleaners\\Quellix 1.exe", "C:\\PRIVAC~1\\QUELLI~1.EXE"),
            "C:\\PrivacyCleaners\\QUELLI~1.exe m");
}

TEST(RunValueData, KeepsTheLongFormWhereThereIsNoShortOne) {
  EXPECT_EQ(RunValueData("C:\\Program Files\\Quellix.exe", ""), "C:\\Program Files\\Quellix.exe m");
  EXPECT_EQ(RunValueData("C:\\Program Files\\Quellix.exe", "C:\\Program Files\\Quellix.exe"),
            "C:\\Program Files\\Quellix.exe m");
  EXPECT_EQ(RunValueData("C:\\My Quellix.exe", "Q"), "C:\\Q.exe m")
      << "a short form without a folder has a name all the same";
}

TEST(RunValueData, TakesBytesBeyondAsciiAsTheyAre) {
  EXPECT_EQ(RunValueData("C:\\Pr\xFC"
                         "fer\\Qu\xEBllix.exe",
                         ""),
            "C:\\Pr\xFC"
            "fer\\Qu\xEBllix.exe m");
}
