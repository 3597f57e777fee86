// What the system makes of wide texts: its code page, which is 1252 here, and its letters.
#include "platform/wide_system.h"

#include <gtest/gtest.h>

#include "platform/win32.h"

using namespace platform;

namespace {

// With and without wide functions.
class LettersTest : public testing::TestWithParam<bool> {
 protected:
  void SetUp() override { AnsiNamesOnlyForTests = GetParam(); }
  void TearDown() override { AnsiNamesOnlyForTests = false; }
};
INSTANTIATE_TEST_SUITE_P(WideAndAnsi, LettersTest, testing::Bool());

}  // namespace

TEST_P(LettersTest, CrossBothWaysWithinTheCodePage) {
  ASSERT_EQ(::GetACP(), 1252u) << "the code page that these tests are written for";
  for (int byte = 1; byte < 256; ++byte) {
    const std::string ansi(1, static_cast<char>(byte));
    EXPECT_EQ(NarrowExactly(Widen(ansi)), ansi) << byte;
  }
  EXPECT_EQ(Widen("C:\\\xC4\x80"), L"C:\\\u00C4\u20AC");
  EXPECT_EQ(Widen(""), L"");
  EXPECT_EQ(NarrowExactly(L""), "");
  EXPECT_EQ(Widen(std::string("a\0b", 3)), WideText(L"a\0b", 3));
  EXPECT_EQ(Narrow(L"C:\\\u00C4\u20AC"), "C:\\\xC4\x80");
}

TEST_P(LettersTest, OutsideTheCodePageBecomeNoneThatLooksAlike) {
  for (const WideText letter : {L"\u0141", L"\uFF3C", L"\uFF0F", L"\uFF1A", L"\uFF41", L"\u2216", L"\u65E5", L"\u0430",
                                L"\xD83D", L"\xD83D\xDE00", L"\u212A", L"\u221E"}) {
    EXPECT_FALSE(NarrowExactly(letter)) << testing::PrintToString(letter);
    EXPECT_FALSE(NarrowExactly(L"a" + letter + L"b")) << testing::PrintToString(letter);
    EXPECT_EQ(Narrow(L"\u00C4" + letter + L"b"), "\xC4" + std::string(letter.size(), '?') + "b");
  }
}

TEST_P(LettersTest, HaveCapitalForms) {
  EXPECT_EQ(UpperCase(L"az{ \u00E4\u00E9\u00DF\u0161"), L"AZ{ \u00C4\u00C9\u00DF\u0160");
  EXPECT_EQ(UpperCase(L""), L"");
  if (GetParam()) return;  // the letters of the code page are all that there is
  EXPECT_EQ(UpperCase(L"\u0142\u0436\xD83D."), L"\u0141\u0416\xD83D.");
}

TEST_P(LettersTest, AreEqualIgnoringTheirCase) {
  EXPECT_TRUE(EqualIgnoringCase(L"Stra\u00DFe \u00E9", L"sTRA\u00DFE \u00C9"));
  EXPECT_FALSE(EqualIgnoringCase(L"\u00E9", L"e"));
}
