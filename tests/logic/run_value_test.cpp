#include "automation/run_value.h"

#include <gtest/gtest.h>

#include "wide_system_for_tests.h"

using namespace automation;
using namespace platform;

namespace {

std::string DataOf(WideView file, WideView shortFile) { return RunValueData(FullPath(file), FullPath(shortFile)); }

}  // namespace

TEST(RunValueName, IsTheProductItsMajorAndItsMinorVersion) { EXPECT_EQ(RunValueName(), "Quellix - 1.0"); }

TEST(RunValueData, IsFolderNameAndArgument) {
  EXPECT_EQ(DataOf(u"C:\\Quellix\\Quellix.exe", u"C:\\Quellix\\Quellix.exe"), "C:\\Quellix\\Quellix.exe m");
  EXPECT_EQ(DataOf(u"D:\\a\\b.c\\d\\Quellix.exe", u""), "D:\\a\\b.c\\d\\Quellix.exe m");
}

TEST(RunValueData, IsOfAProgramUnderAnyName) {
  EXPECT_EQ(DataOf(u"C:\\Tools\\Clean.exe", u""), "C:\\Tools\\Clean.exe m");
  EXPECT_EQ(DataOf(u"C:\\Tools\\Clean.v1.exe", u""), "C:\\Tools\\Clean.v1.exe m");
  EXPECT_EQ(DataOf(u"C:\\Tools\\CLEAN.EXE", u""), "C:\\Tools\\CLEAN.exe m");
  EXPECT_EQ(DataOf(u"C:\\To.ols\\Clean", u""), "C:\\To.ols\\Clean.exe m");
}

TEST(RunValueData, OfAProgramInARootHasOneBackslash) {
  EXPECT_EQ(DataOf(u"C:\\Quellix.exe", u"C:\\Quellix.exe"), "C:\\Quellix.exe m");
}

TEST(RunValueData, OfAProgramOnAShareBeginsWithTheShare) {
  EXPECT_EQ(DataOf(u"\\\\server\\tools\\Quellix.exe", u""), "\\\\server\\tools\\Quellix.exe m");
}

TEST(RunValueData, TakesTheShortFormOfAFolderWithABlank) {
  EXPECT_EQ(DataOf(u"C:\\Program Files\\Quellix\\Quellix.exe", u"C:\\PROGRA~1\\Quellix\\Quellix.exe"),
            "C:\\PROGRA~1\\Quellix\\Quellix.exe m");
  EXPECT_EQ(DataOf(u"C:\\My Tools\\Quellix of mine.exe.exe", u"C:\\MYTOOL~1\\QUELLI~1.EXE"), "C:\\MYTOOL~1\\QUELLI~1.exe m");
}

TEST(RunValueData, TakesTheShortFormOfANameWithABlank) {
  EXPECT_EQ(DataOf(u"C:\\Tools\\Quellix of mine.exe", u"C:\\Tools\\QUELLI~1.EXE"), "C:\\Tools\\QUELLI~1.exe m");
}

TEST(RunValueData, LeavesAPartWithoutABlankAsItIs) {
  // The short form of a name that is long in itself would hide what the value starts.
  EXPECT_EQ(DataOf(u"C:\\Program Files\\QuellixThePrivacyCleaner.exe", u"C:\\PROGRA~1\\QUELLI~1.EXE"),
            "C:\\PROGRA~1\\QuellixThePrivacyCleaner.exe m");
  EXPECT_EQ(DataOf(u"C:\\PrivacyCleaners\\Quellix 1.exe", u"C:\\PRIVAC~1\\QUELLI~1.EXE"),
            "C:\\PrivacyCleaners\\QUELLI~1.exe m");
}

TEST(RunValueData, PutsQuotesAroundAPathWithBlanksThatHasNoShortForm) {
  EXPECT_EQ(DataOf(u"D:\\My Tools\\Quellix.exe", u""), "\"D:\\My Tools\\Quellix.exe\" m");
  EXPECT_EQ(DataOf(u"D:\\My Tools\\Quellix.exe", u"D:\\My Tools\\Quellix.exe"), "\"D:\\My Tools\\Quellix.exe\" m");
  EXPECT_EQ(DataOf(u"D:\\Tools\\Quellix of mine.exe", u""), "\"D:\\Tools\\Quellix of mine.exe\" m");
  EXPECT_EQ(DataOf(u"D:\\My Tools\\Quellix of mine.exe", u"D:\\MYTOOL~1\\Quellix of mine.exe"),
            "\"D:\\MYTOOL~1\\Quellix of mine.exe\" m");
  EXPECT_EQ(DataOf(u"\\\\server\\my tools\\Quellix.exe", u""), "\"\\\\server\\my tools\\Quellix.exe\" m");
}

TEST(RunValueData, IsEmptyForAPathThatQuotesDoNotKeepEither) {
  for (const char16_t* file :
       {u"D:\\My Tools \\Quellix.exe", u"D:\\a.\\Quellix.exe", u"D:\\\u0141 b\\Quellix.exe", u"D:\\b\\\u0141.exe"})
    EXPECT_EQ(DataOf(file, u""), "") << testing::PrintToString(WideText(file));
  EXPECT_EQ(DataOf(u"", u""), "");
}

TEST(RunValueData, TakesTheShortFormOfAPathThatIsTooLongAndIsEmptyWithoutOne) {
  const WideText level = u"\\" + WideText(59, u'a');
  const WideText file = u"D:" + level + level + level + level + u"\\Quellix.exe";  // 256 characters with the "m"
  EXPECT_EQ(DataOf(file, u"D:\\AAAAAA~1\\AAAAAA~1\\AAAAAA~1\\AAAAAA~1\\Quellix.exe"), Narrow(file) + " m");
  const WideText longer = u"D:" + level + level + level + level + u"aaaa\\Quellix.exe";
  EXPECT_EQ(DataOf(longer, u"D:\\AAAAAA~1\\AAAAAA~1\\AAAAAA~1\\AAAAAA~1\\Quellix.exe"),
            "D:\\AAAAAA~1\\AAAAAA~1\\AAAAAA~1\\AAAAAA~1\\Quellix.exe m");
  EXPECT_EQ(DataOf(longer, u""), "");
  EXPECT_EQ(DataOf(longer, longer), "");
}

TEST(RunValueData, TakesLettersOfTheCodePageAsTheyAre) {
  EXPECT_EQ(DataOf(u"C:\\Pr\u00FCfer\\Qu\u00EBllix.exe", u"C:\\PRFER~1\\QULLIX~1.EXE"),
            "C:\\Pr\xFC"
            "fer\\Qu\xEBllix.exe m");
  const OtherSystem farEast(CodePage::kDoubleByte);
  EXPECT_EQ(DataOf(u"C:\\" + Widen("\x8F\x5C") + u"\\Quellix.exe", u"C:\\A~1\\Quellix.exe"), "C:\\\x8F\x5C\\Quellix.exe m");
}

TEST(RunValueData, TakesTheShortFormOfAPartThatTheCodePageLacks) {
  EXPECT_EQ(DataOf(u"C:\\\u0141\\Quellix.exe", u"C:\\A~1\\Quellix.exe"), "C:\\A~1\\Quellix.exe m");
  EXPECT_EQ(DataOf(u"C:\\Tools\\\u0141.exe", u"C:\\Tools\\B~1.EXE"), "C:\\Tools\\B~1.exe m");
}

TEST(RunValueData, IsEmptyWhereNeitherFormIsInTheCodePage) {
  EXPECT_EQ(DataOf(u"C:\\\u0141\\Quellix.exe", u"C:\\\u0142\\Quellix.exe"), "");
}

// It would be cut off, and the value would start the program of another folder.
TEST(RunValueData, TakesTheShortFormOfAFolderThatEndsInADot) {
  EXPECT_EQ(DataOf(u"C:\\a.\\Quellix.exe", u"C:\\A~1\\Quellix.exe"), "C:\\A~1\\Quellix.exe m");
}
