#include "iea/iea_rules.h"

#include <gtest/gtest.h>

using namespace iea;

TEST(AsksToClear, TakesTheSingleArgument1BehindAnyProgramName) {
  for (const char* line : {"iea.exe 1", "\"C:\\a b\\iea.exe\" 1", "C:\\Quellix\\iea.exe 1", "\"C:\\Quellix\\iea.exe\"   1",
                           "iea.exe 1 ", "\"C:\\a b\\iea.exe\" 1   ", "C:\\a\" \"b\\iea.exe 1"})
    EXPECT_TRUE(AsksToClear(line)) << "[" << line << "]";
}

TEST(AsksToClear, TakesNoOtherArgumentForARequest) {
  for (const char* argument : {"",    " ",  "11", "01",  "1 2",   "2 1",    "1 1", "0",   "-1",  "+1",
                               "1.0", "/1", "1,", "one", "\"1\"", "\"\" 1", "\"1", "1\"", "1\t", "\xB9"})
    EXPECT_FALSE(AsksToClear(std::string("iea.exe ") + argument)) << "[" << argument << "]";
}

TEST(AsksToClear, TakesNothingOfTheProgramsNameForTheArgument) {
  for (const char* line : {"", " ", "1", "iea.exe", "iea.exe1", "\"C:\\folder 1\\iea.exe\"", "\"C:\\a b\\iea.exe\"1",
                           "\"C:\\a b\\iea.exe 1", "1 iea.exe", "\"iea.exe 1\"", "C:\\folder 1\\iea.exe"})
    EXPECT_FALSE(AsksToClear(line)) << "[" << line << "]";
}

TEST(IsFormEntry, TakesTheEntriesOfFields) {
  for (const wchar_t* name : {L"email:StringData", L"email:StringIndex", L"q:StringData", L"", L"http", L"http:StringData",
                              L"a:/b", L"//name", L":/ /", L"пароль:StringData"})
    EXPECT_TRUE(IsFormEntry(name));
}

TEST(IsFormEntry, LeavesTheSavedPasswordsWhichStandUnderAWebAddress) {
  for (const wchar_t* name : {L"http://shop.example/login:StringData", L"https://shop.example/:StringIndex",
                              L"HTTPS://SHOP.EXAMPLE/", L"ftp://files.example/", L"://", L"name behind://it"})
    EXPECT_FALSE(IsFormEntry(name));
}
