// A full path: how one is made of a text, what it is joined with, and what makes it lead nowhere.
#include "platform/path.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "shown.h"
#include "wide_system_for_tests.h"

using namespace platform;
using namespace std::string_view_literals;

namespace {

using testing::ElementsAre;

enum Kind { kNoFullPath, kRoot, kBelowRoot };

struct Row {
  const char16_t* text;
  Kind kind;
  const char16_t* shown;
};

const Row kTexts[] = {
    {u"", kNoFullPath, u""},
    {u" ", kNoFullPath, u""},
    {u"\\", kNoFullPath, u""},
    {u"/", kNoFullPath, u""},
    {u".", kNoFullPath, u""},
    {u"..", kNoFullPath, u""},
    {u"Temp", kNoFullPath, u""},
    {u"Temp\\A", kNoFullPath, u""},
    {u".\\Temp", kNoFullPath, u""},
    {u"\\Temp", kNoFullPath, u""},
    {u"C", kNoFullPath, u""},
    {u"C:", kNoFullPath, u""},
    {u"C:Temp", kNoFullPath, u""},
    {u"C:.", kNoFullPath, u""},
    {u"C:/Temp", kNoFullPath, u""},
    {u" C:\\Temp", kNoFullPath, u""},
    {u"\"C:\\Temp\"", kNoFullPath, u""},
    {u"1:\\Temp", kNoFullPath, u""},
    {u"@:\\Temp", kNoFullPath, u""},
    {u"[:\\Temp", kNoFullPath, u""},
    {u"`:\\Temp", kNoFullPath, u""},
    {u"{:\\Temp", kNoFullPath, u""},
    {u"\u00C9:\\Temp", kNoFullPath, u""},
    {u"\uFF23:\\Temp", kNoFullPath, u""},  // a wide C
    {u"C\uFF1A\\Temp", kNoFullPath, u""},  // a wide colon
    {u"C:\uFF3CTemp", kNoFullPath, u""},   // a wide backslash
    {u"CC:\\Temp", kNoFullPath, u""},
    {u"%TEMP%", kNoFullPath, u""},
    {u"C:\\", kRoot, u"C:\\"},
    {u"c:\\", kRoot, u"c:\\"},
    {u"A:\\", kRoot, u"A:\\"},
    {u"Z:\\", kRoot, u"Z:\\"},
    {u"z:\\", kRoot, u"z:\\"},
    {u"C:\\\\", kRoot, u"C:\\"},
    {u"C:\\\\\\\\", kRoot, u"C:\\"},
    {u"C:\\.", kRoot, u"C:\\"},
    {u"C:\\..", kRoot, u"C:\\"},
    {u"C:\\a\\..", kRoot, u"C:\\"},
    {u"C:\\a\\..\\..\\..", kRoot, u"C:\\"},
    {u"C:\\Temp", kBelowRoot, u"C:\\Temp"},
    {u"c:\\t", kBelowRoot, u"c:\\t"},
    {u"C:\\Temp\\", kBelowRoot, u"C:\\Temp"},
    {u"C:\\Temp\\A", kBelowRoot, u"C:\\Temp\\A"},
    {u"C:\\Temp/A", kBelowRoot, u"C:\\Temp\\A"},
    {u"C:\\\\Temp\\\\\\A//B\\/", kBelowRoot, u"C:\\Temp\\A\\B"},
    {u"C:\\a\\.\\b\\..\\c", kBelowRoot, u"C:\\a\\c"},
    {u"C:\\..\\a", kBelowRoot, u"C:\\a"},
    {u"C:\\my files, old\\a;b 'c' [1].txt", kBelowRoot, u"C:\\my files, old\\a;b 'c' [1].txt"},
    {u"C:\\.a", kBelowRoot, u"C:\\.a"},
    {u"C:\\..a", kBelowRoot, u"C:\\..a"},
    {u"C:\\\u5341\u4E8C\u6708\\\u4E88\u5B9A\u8868", kBelowRoot, u"C:\\\u5341\u4E8C\u6708\\\u4E88\u5B9A\u8868"},
    {u"C:\\\xD83D\\\xDE00\xD83D", kBelowRoot, u"C:\\\xD83D\\\xDE00\xD83D"},  // half surrogate pairs
    {u"C:\\a\uFF3Cb\uFF1Ac", kBelowRoot, u"C:\\a\uFF3Cb\uFF1Ac"},            // what only looks like "\" and ":"
    {u"\\\\", kNoFullPath, u""},
    {u"\\\\server", kNoFullPath, u""},
    {u"\\\\server\\", kNoFullPath, u""},
    {u"\\\\\\share", kNoFullPath, u""},
    {u"\\\\\\\\", kNoFullPath, u""},
    {u"\\\\server\\\\share", kNoFullPath, u""},
    {u"\\\\server\\..\\temp", kNoFullPath, u""},
    {u"//server/share", kNoFullPath, u""},
    {u"\\\\server/share", kNoFullPath, u""},
    {u"\\server\\share", kNoFullPath, u""},
    {u"\\\\s\\h", kRoot, u"\\\\s\\h\\"},
    {u"\\\\server\\share", kRoot, u"\\\\server\\share\\"},
    {u"\\\\server\\share\\", kRoot, u"\\\\server\\share\\"},
    {u"\\\\server\\share\\\\", kRoot, u"\\\\server\\share\\"},
    {u"\\\\server\\share\\temp\\..\\..", kRoot, u"\\\\server\\share\\"},
    {u"\\\\server\\C$", kRoot, u"\\\\server\\C$\\"},
    {u"\\\\10.0.0.1\\share\\", kRoot, u"\\\\10.0.0.1\\share\\"},
    {u"\\\\s\\h\\t", kBelowRoot, u"\\\\s\\h\\t"},
    {u"\\\\server\\share\\temp", kBelowRoot, u"\\\\server\\share\\temp"},
    {u"\\\\server\\share\\temp\\", kBelowRoot, u"\\\\server\\share\\temp"},
    {u"\\\\server\\share\\temp\\a", kBelowRoot, u"\\\\server\\share\\temp\\a"},
    {u"\\\\.\\C:", kNoFullPath, u""},
    {u"\\\\.\\C:\\Temp", kNoFullPath, u""},
    {u"\\\\.\\PhysicalDrive0", kNoFullPath, u""},
    {u"\\\\.\\pipe\\x", kNoFullPath, u""},
    {u"\\\\?\\C:\\", kNoFullPath, u""},
    {u"\\\\?\\C:\\Temp", kNoFullPath, u""},
    {u"\\\\?\\UNC\\server\\share\\temp", kNoFullPath, u""},
    {u"\\??\\C:\\Temp", kNoFullPath, u""},
};

// Full by their beginning, and lead elsewhere than they read on every system.
const char16_t* const kNowhere[] = {
    u"C:\\*",     u"C:\\*.*",  u"C:\\a?",         u"C:\\a\"b",
    u"C:\\<a>",   u"C:\\a|b",  u"C:\\a:b",        u"C:\\a\\b::$DATA",
    u"C:\\C:\\a", u"C:\\...",  u"C:\\a\\....\\b", u"C:\\a\\...",
    u"C:\\a?\\",  u"C:\\*\\b", u"C:\\*\\..\\b",   u"\\\\server\\share\\a:b",
};

Path At(WideView text) {
  const Path path = FullPath(text);
  EXPECT_FALSE(path.IsEmpty()) << testing::PrintToString(WideText(text));
  return path;
}

WideText Repeated(WideView text, int times) {
  WideText all;
  for (int time = 0; time < times; ++time) all += text;
  return all;
}

}  // namespace

TEST(FullPath, IsOfADriveWithItsRootOrAShare) {
  for (const bool ansi : {false, true}) {
    const OtherSystem system(CodePage::kSingleByte, ansi);
    for (const Row& row : kTexts) {
      const Path path = FullPath(row.text);
      EXPECT_EQ(path.Shown(), row.shown) << testing::PrintToString(row.text);
      EXPECT_EQ(path.IsEmpty(), row.kind == kNoFullPath) << testing::PrintToString(row.text);
      EXPECT_EQ(path.IsRoot(), row.kind == kRoot) << testing::PrintToString(row.text);
      EXPECT_EQ(IsAbsolutePath(row.text), row.kind != kNoFullPath) << testing::PrintToString(row.text);
    }
  }
}

TEST(FullPath, IsEmptyForATextThatWouldLeadElsewhereThanItReads) {
  for (const char16_t* text : kNowhere) {
    EXPECT_TRUE(FullPath(text).IsEmpty()) << testing::PrintToString(text);
    EXPECT_TRUE(IsAbsolutePath(text)) << testing::PrintToString(text);
  }
  EXPECT_TRUE(FullPath(u"C:\\a\0b"sv).IsEmpty()) << "a NUL character in it";
  EXPECT_FALSE(FullPath(u"C:\\" + WideText(255, u'x')).IsEmpty());
  EXPECT_TRUE(FullPath(u"C:\\" + WideText(256, u'x') + u"\\..\\a").IsEmpty()) << "no file system has such a name";
}

TEST(FullPath, TakesNamesLiterallyWhereTheSystemDoes) {
  for (const char16_t* text : {u"C:\\a.", u"C:\\a ", u"C:\\a. \\b", u"C:\\nul", u"C:\\work\\con.txt", u"C:\\com1\\a"})
    EXPECT_EQ(FullPath(text).Shown(), text);
}

// The ANSI functions cut blanks and dots at the end of a name off, and take devices' names for the devices.
TEST(FullPath, IsEmptyOnWindows9xForANameThatIsReadOtherwiseThere) {
  const OtherSystem windows9x(CodePage::kSingleByte, true);
  for (const char16_t* text : {u"C:\\a.", u"C:\\a ", u"C:\\a. \\b", u"C:\\nul", u"C:\\NUL", u"C:\\work\\con.txt",
                               u"C:\\com1\\a", u"C:\\Lpt9.x.y", u"C:\\aux .txt", u"C:\\prn", u"\\\\server\\share \\a"})
    EXPECT_TRUE(FullPath(text).IsEmpty()) << testing::PrintToString(text);
  for (const char16_t* text :
       {u"C:\\null", u"C:\\com", u"C:\\com0", u"C:\\com10", u"C:\\a.nul", u"C:\\cons\\lpt", u"C:\\ a"})
    EXPECT_EQ(FullPath(text).Shown(), text);
}

TEST(FullPath, IsMadeForTheSystemOnce) {
  EXPECT_EQ(At(u"C:\\").Native(), u"\\\\?\\C:\\");
  EXPECT_EQ(At(u"c:\\a/b\\").Native(), u"\\\\?\\c:\\a\\b");
  EXPECT_EQ(At(u"\\\\server\\share").Native(), u"\\\\?\\UNC\\server\\share\\");
  EXPECT_EQ(At(u"\\\\server\\share\\a").Native(), u"\\\\?\\UNC\\server\\share\\a");
  const OtherSystem windows9x(CodePage::kSingleByte, true);
  EXPECT_EQ(At(u"C:\\").Native(), u"C:\\");
  EXPECT_EQ(At(u"c:\\a/b\\").Native(), u"c:\\a\\b");
  EXPECT_EQ(At(u"\\\\server\\share\\a").Native(), u"\\\\server\\share\\a");
}

TEST(FullPath, TakesTwoHundredBackslashesForOne) {
  const WideText many = Repeated(u"\\", 200);
  EXPECT_EQ(FullPath(u"C:" + many + u"a" + many + u"b" + many).Shown(), u"C:\\a\\b");
  EXPECT_TRUE(FullPath(many).IsEmpty());
  EXPECT_TRUE(FullPath(many + u"a\\b").IsEmpty());
  EXPECT_EQ(FullPath(u"C:" + Repeated(u"\\a", 200) + Repeated(u"\\..", 199)).Shown(), u"C:\\a");
}

TEST(FullPath, OfWhatItShowsIsThePathItself) {
  for (const Row& row : kTexts) EXPECT_EQ(FullPath(FullPath(row.text).Shown()), FullPath(row.text));
}

TEST(SpelledPath, IsThatOfAFullText) {
  for (const Row& row : kTexts)
    if (row.kind != kNoFullPath) EXPECT_EQ(SpelledPath(row.text), FullPath(row.text)) << testing::PrintToString(row.text);
}

TEST(SpelledPath, IsAlsoThatOfOtherSpellings) {
  const struct {
    const char16_t *text, *shown;
  } rows[] = {
      {u"C:/", u"C:\\"},
      {u"C:/deep/a.txt", u"C:\\deep\\a.txt"},
      {u"c:/deep\\..\\a.txt", u"c:\\a.txt"},
      {u"//server/share", u"\\\\server\\share\\"},
      {u"\\\\server/share/a", u"\\\\server\\share\\a"},
      {u"\\\\?\\C:\\", u"C:\\"},
      {u"\\\\?\\C:\\work\\a. ", u"C:\\work\\a. "},
      {u"\\\\?\\C:\\work\\", u"C:\\work"},
      {u"\\\\?\\UNC\\server\\share\\a", u"\\\\server\\share\\a"},
      {u"\\\\?\\UNC\\server\\share", u"\\\\server\\share\\"},
  };
  for (const auto& row : rows) EXPECT_EQ(SpelledPath(row.text).Shown(), row.shown) << testing::PrintToString(row.text);
}

// After "\\?\" the system takes every character as it is.
TEST(SpelledPath, IsEmptyForWhatIsNoPathOfADriveOrShare) {
  for (const char16_t* text : {u"",
                               u"a",
                               u"C:",
                               u"C:a",
                               u"\\a",
                               u"/a",
                               u"\\\\.\\C:\\a",
                               u"//./C:/a",
                               u"\\\\?\\",
                               u"\\\\?\\C:",
                               u"\\\\?\\C:a",
                               u"\\\\?\\C:\\a\\..\\b",
                               u"\\\\?\\C:\\a\\.\\b",
                               u"\\\\?\\C:\\a/b",
                               u"\\\\?\\C:/a",
                               u"\\\\?\\C:\\a\\\\b",
                               u"\\\\?\\unc\\server\\share\\a",
                               u"\\\\?\\Volume{0}\\a",
                               u"\\\\?\\GLOBALROOT\\Device\\a",
                               u"\\\\?\\\\\\?\\C:\\a",
                               u"\\\\?\\UNC\\C:\\a"})
    EXPECT_TRUE(SpelledPath(text).IsEmpty()) << testing::PrintToString(text);
  const OtherSystem windows9x(CodePage::kSingleByte, true);
  EXPECT_TRUE(SpelledPath(u"\\\\?\\C:\\a").IsEmpty());
}

TEST(SplitRelative, TellsWhatATextIsRelativeTo) {
  const struct {
    const char16_t *text, *from, *rest;
  } rows[] = {
      {u"a", u".", u"a"},           {u"a\\b", u".", u"a\\b"}, {u"..\\a", u".", u"..\\a"}, {u".", u".", u"."},
      {u" ", u".", u" "},           {u"C", u".", u"C"},       {u"1:a", u".", u"1:a"},     {u"C:", u"C:.", u""},
      {u"c:a\\b", u"c:.", u"a\\b"}, {u"C:..", u"C:.", u".."}, {u"\\", u"\\", u""},        {u"\\a", u"\\", u"a"},
      {u"/a/b", u"\\", u"a/b"},     {u"", u"", u""},          {u"\\\\", u"", u""},        {u"\\\\a", u"", u""},
      {u"/\\a", u"", u""},          {u"\\\\.\\C:", u"", u""}, {u"\\\\?\\C:\\", u"", u""}, {u"C:\\a", u"", u""},
      {u"C:/a:b", u"", u""},        {u"NUL", u"", u""},       {u"con.txt", u"", u""},     {u"com1", u"", u""},
      {u"nul\\a", u".", u"nul\\a"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(SplitRelative(row.text).from, row.from) << testing::PrintToString(row.text);
    EXPECT_EQ(SplitRelative(row.text).rest, row.rest) << testing::PrintToString(row.text);
  }
}

TEST(Path, IsEmptyUntilItIsMadeAndLeadsNowhereThen) {
  const Path none;
  EXPECT_TRUE(none.IsEmpty());
  EXPECT_FALSE(none.IsRoot());
  EXPECT_EQ(none.Native(), u"");
  EXPECT_EQ(none.Shown(), u"");
  EXPECT_EQ(none.Name(), u"");
  EXPECT_TRUE(none.Parent().IsEmpty());
  EXPECT_TRUE((none / u"a").IsEmpty());
  EXPECT_TRUE(none.Resolve(u"a").IsEmpty());
  EXPECT_EQ(none, FullPath(u"a"));
}

TEST(Path, JoinsAFolderAndNamesWithOneBackslash) {
  EXPECT_EQ(At(u"C:\\") / u"a", At(u"C:\\a"));
  EXPECT_EQ(At(u"C:\\a\\") / u"b.txt", At(u"C:\\a\\b.txt"));
  EXPECT_EQ(At(u"C:\\a") / u"b\\c d\\e", At(u"C:\\a\\b\\c d\\e"));
  EXPECT_EQ(At(u"\\\\server\\share") / u"a", At(u"\\\\server\\share\\a"));
  Path path = At(u"C:\\a");
  path /= u"b";
  EXPECT_EQ(path, At(u"C:\\a\\b"));
}

TEST(Path, JoinsANameAsItStands) {
  for (const char16_t* name : {u" ", u"a ", u"a.", u"...", u"nul", u"\uFF41", u"\u5341", u"\xDE00", u"~", u"a,b;c=[1]"})
    EXPECT_EQ((At(u"C:\\a") / name).Native(), u"\\\\?\\C:\\a\\" + WideText(name));
}

TEST(Path, LeadsNowhereWithANameThatLeadsElsewhere) {
  for (const WideView name : {u""sv, u"."sv, u".."sv, u"..\\a"sv, u"a\\..\\b"sv, u"\\a"sv, u"a\\\\b"sv, u"a/b"sv, u"C:\\a"sv,
                              u"a:b"sv, u"*"sv, u"a?"sv, u"<"sv, u">"sv, u"|"sv, u"\""sv, u"a\0"sv}) {
    EXPECT_TRUE((At(u"C:\\a") / name).IsEmpty()) << testing::PrintToString(WideText(name));
    EXPECT_TRUE((At(u"C:\\a") / name / u"b").IsEmpty()) << "and stays so";
  }
  const OtherSystem windows9x(CodePage::kSingleByte, true);
  for (const char16_t* name : {u" ", u"a ", u"a.", u"..."})
    EXPECT_TRUE((At(u"C:\\a") / name).IsEmpty()) << testing::PrintToString(name);
}

TEST(Path, ResolvesWhatUsersWrite) {
  const Path folder = At(u"C:\\a\\b");
  for (const char16_t* text : {u"", u".", u"\\", u"x\\..", u".\\.\\", u"..\\b", u"../b/", u"..\\..\\..\\..\\a\\b"})
    EXPECT_EQ(folder.Resolve(text), folder) << testing::PrintToString(text);
  EXPECT_EQ(folder.Resolve(u"c/d\\e"), At(u"C:\\a\\b\\c\\d\\e"));
  EXPECT_EQ(folder.Resolve(u"..\\..\\.."), At(u"C:\\"));
  for (const char16_t* text : {u"...", u"..\\....\\a", u"C:x", u"a:b", u"*", u"a?\\.."})
    EXPECT_TRUE(folder.Resolve(text).IsEmpty()) << testing::PrintToString(text);
}

TEST(Path, HasANameAndAParentUpToItsRoot) {
  Path path = At(u"\\\\server\\share\\one\\two");
  EXPECT_EQ(path.Name(), u"two");
  EXPECT_EQ(path.Parent(), At(u"\\\\server\\share\\one"));
  path.RemoveName();
  path.RemoveName();
  EXPECT_EQ(path, At(u"\\\\server\\share\\"));
  EXPECT_EQ(path.Name(), u"");
  path.RemoveName();
  EXPECT_TRUE(path.IsEmpty());
  path.RemoveName();
  EXPECT_TRUE(path.IsEmpty());
  EXPECT_EQ(At(u"C:\\a").Parent(), At(u"C:\\"));
  EXPECT_EQ(At(u"C:\\a").Name(), u"a");
  EXPECT_TRUE(At(u"C:\\").Parent().IsEmpty());
}

// The bytes of its last letter in the code page end in 0x5C; no byte is looked at.
TEST(Path, IsSplitAndJoinedByCharactersOnADoubleByteCodePage) {
  const OtherSystem farEast(CodePage::kDoubleByte);
  const WideText name = Widen("\x8F\x5C\x93\xF1");
  EXPECT_NE(NarrowExactly(Widen("\x8F\x5C"))->find('\\'), std::string::npos) << "the test's own code page";
  const Path path = At(u"C:\\") / Widen("\x8F\x5C");
  EXPECT_EQ(path.Parent(), At(u"C:\\"));
  EXPECT_EQ(path.Name(), Widen("\x8F\x5C"));
  EXPECT_EQ((path / u"a").Shown(), u"C:\\" + Widen("\x8F\x5C") + u"\\a");
  EXPECT_EQ(AppendBackslash(path.Shown()), path.Shown() + u"\\");
}

TEST(IsSameOrBelow, ComparesWholeNamesIgnoringTheCaseOfEveryLetter) {
  const struct {
    const char16_t *inner, *outer;
    bool sameOrBelow;
  } rows[] = {
      {u"C:\\Windows", u"C:\\Windows", true},
      {u"C:\\Windows\\", u"C:\\Windows", true},
      {u"C:\\Windows", u"C:\\Windows\\", true},
      {u"c:\\WINDOWS", u"C:\\windows", true},
      {u"C:\\JOS\u00C9\\x", u"C:\\Jos\u00E9", true},
      {u"C:\\\u0141ukasz", u"C:\\\u0142UKASZ", true},
      {u"C:\\\u041F\u0430\u043F\u043A\u0430", u"C:\\\u043F\u0410\u041F\u041A\u0410", true},
      {u"C:\\Windows\\System", u"C:\\Windows", true},
      {u"c:\\windows\\system", u"C:\\WINDOWS\\", true},
      {u"C:\\Windows\\System\\Deep\\Down\\", u"C:\\Windows", true},
      {u"C:\\Windows", u"C:\\", true},
      {u"C:\\", u"C:\\", true},
      {u"\\\\server\\share\\a", u"\\\\SERVER\\Share", true},
      {u"\\\\server\\share", u"\\\\SERVER\\Share", true},
      {u"C:\\Windows", u"C:\\Windows\\System", false},
      {u"C:\\", u"C:\\Windows", false},
      {u"C:\\Windows.old", u"C:\\Windows", false},
      {u"C:\\WindowsTemp", u"C:\\Windows", false},
      {u"C:\\Window", u"C:\\Windows", false},
      {u"C:\\Windows", u"C:\\Window", false},
      {u"D:\\Windows", u"C:\\Windows", false},
      {u"C:\\A\\Windows", u"C:\\Windows", false},
      {u"C:\\\u0141ukasz", u"C:\\Lukasz", false},
      {u"C:\\\u5341\u4E8C\u6708", u"C:\\\u5341", false},
      {u"\\\\server\\share2", u"\\\\server\\share", false},
      {u"\\\\other\\share\\a", u"\\\\server\\share", false},
      {u"", u"C:\\Windows", false},
      {u"C:\\Windows", u"", false},
      {u"", u"", false},
  };
  for (const bool ansi : {false, true}) {
    const OtherSystem system(CodePage::kSingleByte, ansi);
    for (const auto& row : rows)
      EXPECT_EQ(IsSameOrBelow(FullPath(row.inner), FullPath(row.outer)), row.sameOrBelow)
          << testing::PrintToString(row.inner) << " in " << testing::PrintToString(row.outer);
  }
}

TEST(AppendBackslash, AddsOneUnlessTheTextEndsInOne) {
  EXPECT_EQ(AppendBackslash(u"C:"), u"C:\\");
  EXPECT_EQ(AppendBackslash(u"C:\\"), u"C:\\");
  EXPECT_EQ(AppendBackslash(u"C:\\Temp"), u"C:\\Temp\\");
  EXPECT_EQ(AppendBackslash(u"C:\\Temp\\"), u"C:\\Temp\\");
  EXPECT_EQ(AppendBackslash(u"C:\\Temp "), u"C:\\Temp \\");
  EXPECT_EQ(AppendBackslash(u"C:/"), u"C:/\\");
  EXPECT_EQ(AppendBackslash(u"\\"), u"\\");
  EXPECT_EQ(AppendBackslash(u"a"), u"a\\");
  EXPECT_EQ(AppendBackslash(u"\u5341"), u"\u5341\\");
  EXPECT_EQ(AppendBackslash(u""), u"\\");
}

TEST(DrivePart, EndsWithTheFirstColon) {
  const struct {
    const char16_t *path, *drive;
  } rows[] = {
      {u"C:\\a\\b", u"C:"},
      {u"C:", u"C:"},
      {u"c:a", u"c:"},
      {u":", u":"},
      {u"", u""},
      {u"a\\b", u""},
      {u"\\\\s\\h\\a", u""},
      {u"file:C:\\a", u"file:"},
      {u"C:\\a:stream", u"C:"},
      {u"a:b:c", u"a:"},
  };
  for (const auto& row : rows) EXPECT_EQ(DrivePart(row.path), row.drive) << testing::PrintToString(row.path);
}
