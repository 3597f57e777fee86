// The keep list between a real list box and its file.
#include "cookies/mdCookies.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include "ansi_paths.h"
#include "cookies/frmCookie_ids.h"
#include "platform/dialog.h"
#include "platform/handles.h"
#include "platform/runtime_error.h"
#include "scratch_folder.h"
#include "window_event.h"

using namespace cookies;
using namespace platform;

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Names = std::vector<std::string>;

class WindowWithList : public Dialog {
 public:
  WindowWithList() { Create(IDD_frmCookie, nullptr); }
  ~WindowWithList() { Close(); }
  using Dialog::Close;

  ListBox list{*this, IDC_SafeList};
};

class MdCookies : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_NE(list.Handle(), nullptr);
    Err.Clear();
  }
  void TearDown() override { EXPECT_EQ(Err.Number(), 0) << "an error is left pending: " << Err.Description(); }

  void Fill(const Names& names) {
    for (const std::string& name : names) list.AddItem(name);
  }

  Names Lines() const {
    Names lines;
    for (int line = 0; line < list.ListCount(); ++line) lines.push_back(TextOf(list.Item(line)));
    return lines;
  }

  Names LoadedFrom(const std::string& bytes) {
    EXPECT_TRUE(LoadList(list, At(folder.File("list", bytes))));
    return Lines();
  }

  std::string Saved() {
    SaveList(list, At(folder / "list"));
    return ReadWhole(folder / "list");
  }

  // The list has other lines than the file, which no saving gets through to.
  void ExpectSavingLeavesTheFile(const std::string& file) {
    Fill({"new"});
    SaveList(list, At(file));
    EXPECT_EQ(NamesIn(folder.Path()), Names{"list"}) << "something is left beside the file";
  }

  // Long enough after the last one that a walk looks at its first step.
  void AtTheNextLook(std::function<void()> action) const {
    events.AtTheNext(std::move(action));
    LetTheNextLookBeDue();
  }

  WindowWithList window;
  ListBox& list = window.list;
  ScratchFolder folder;
  WindowEvents events;
};
using IsKeptTest = MdCookies;
using SaveListTest = MdCookies;
using LoadListTest = MdCookies;

UniqueFile Hold(const std::string& file, DWORD share) {
  return UniqueFile(::CreateFileA(file.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr));
}

Names Numbered(int count) {
  Names names;
  for (int number = 0; number < count; ++number) names.push_back("user@site" + std::to_string(number) + "[1].txt");
  return names;
}

std::string AsFile(const Names& names) {
  std::string text;
  for (const std::string& name : names) text += name + "\r\n";
  return text;
}

}  // namespace

TEST_F(IsKeptTest, LooksAtNeitherCaseNorBlanksAroundTheName) {
  Fill({"first", "  USER@Site[1].TXT ", "last"});
  for (const char* name : {"user@site[1].txt", "USER@SITE[1].TXT", "  user@site[1].txt", "user@site[1].txt  ", "LAST"})
    EXPECT_TRUE(IsKept(list, Widen(name))) << name;
}

TEST_F(IsKeptTest, IsFalseForANameThatNoLineIs) {
  Fill({"user@site[1].txt", "b c"});
  for (const char* name : {"user@site[1]", "user@site[1].txt2", "site[1].txt", "bc", "b  c", "\tb c", ""})
    EXPECT_FALSE(IsKept(list, Widen(name))) << name;
}

TEST_F(IsKeptTest, IsFalseForAnEmptyList) {
  EXPECT_FALSE(IsKept(list, L"user@site[1].txt"));
  EXPECT_FALSE(IsKept(list, L""));
}

TEST_F(IsKeptTest, TakesABlankLineForTheEmptyName) {
  Fill({"first", "  "});
  EXPECT_TRUE(IsKept(list, L""));
}

TEST_F(IsKeptTest, LetsWindowEventsRunAfterALineThatDoesNotMatch) {
  Fill({"other", "name"});
  AtTheNextLook([&] { list.RemoveItem(1); });
  EXPECT_FALSE(IsKept(list, L"name")) << "the line went before it was looked at";
  EXPECT_TRUE(events.HasRun());
}

TEST_F(IsKeptTest, LetsNoWindowEventRunWhenTheFirstLineMatches) {
  Fill({"name", "other"});
  AtTheNextLook([] {});
  EXPECT_TRUE(IsKept(list, L"name"));
  EXPECT_FALSE(events.HasRun());
}

TEST_F(IsKeptTest, RunsOnWhenAWindowEventEmptiesTheListOrTakesItAway) {
  Fill(Numbered(3));
  AtTheNextLook([&] { list.Clear(); });
  EXPECT_FALSE(IsKept(list, L"name"));
  Fill(Numbered(3));
  AtTheNextLook([&] { window.Close(); });
  EXPECT_FALSE(IsKept(list, L"name"));
  EXPECT_TRUE(events.HasRun());
}

TEST_F(IsKeptTest, IsTrueWhereThereIsALineOfThatCookie) {
  Fill({"other", " NAME", "name"});
  EXPECT_EQ(LineOf(list, L"name"), 1);
  EXPECT_EQ(LineOf(list, L"no name"), -1);
  for (const wchar_t* name : {L"other", L"Name", L"no name"}) EXPECT_EQ(IsKept(list, name), LineOf(list, name) >= 0);
}

TEST_F(SaveListTest, WritesEveryLineInItsOrderEndedByCrLf) {
  Fill({"user@b[1].txt", "user@a[2].txt", "user@b[1].txt"});
  EXPECT_EQ(Saved(), "user@b[1].txt\r\nuser@a[2].txt\r\nuser@b[1].txt\r\n");
  EXPECT_EQ(NamesIn(folder.Path()), Names{"list"});
}

TEST_F(SaveListTest, WritesALineAsItStands) {
  Fill({"  blanks ", "", "with, comma", "\"quoted\"", "\xE4\xF6\xFC\xFF"});
  EXPECT_EQ(Saved(), "  blanks \r\n\r\nwith, comma\r\n\"quoted\"\r\n\xE4\xF6\xFC\xFF\r\n");
}

TEST_F(SaveListTest, MakesAnEmptyFileOfAnEmptyList) {
  folder.File("list", "user@site[1].txt\r\n");
  EXPECT_EQ(Saved(), "");
  EXPECT_TRUE(IsThere(folder / "list"));
}

TEST_F(SaveListTest, ReplacesALongerFile) {
  folder.File("list", std::string(100000, 'x'));
  Fill({"short"});
  EXPECT_EQ(Saved(), "short\r\n");
}

TEST_F(SaveListTest, LeavesAFileThatAnotherProgramHoldsWholeWithoutAWord) {
  const std::string file = folder.File("list", "old\r\n");
  for (const DWORD share : {0uL, DWORD{FILE_SHARE_READ}}) {
    const UniqueFile holder = Hold(file, share);
    ASSERT_TRUE(holder);
    ExpectSavingLeavesTheFile(file);
  }
  EXPECT_EQ(ReadWhole(file), "old\r\n");
}

TEST_F(SaveListTest, LeavesAReadOnlyFileWhole) {
  const std::string file = folder.File("list", "old\r\n");
  ::SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_READONLY);
  ExpectSavingLeavesTheFile(file);
  EXPECT_EQ(ReadWhole(file), "old\r\n");
  EXPECT_NE(::GetFileAttributesA(file.c_str()) & FILE_ATTRIBUTE_READONLY, 0u);
}

TEST_F(SaveListTest, LeavesAFolderOfThatName) {
  ::CreateDirectoryA((folder / "list").c_str(), nullptr);
  ExpectSavingLeavesTheFile(folder / "list");
  EXPECT_NE(::GetFileAttributesA((folder / "list").c_str()) & FILE_ATTRIBUTE_DIRECTORY, 0u);
}

TEST_F(SaveListTest, MakesNoFolder) {
  Fill({"name"});
  SaveList(list, At(folder / "none\\list"));
  SaveList(list, Path());
  EXPECT_THAT(NamesIn(folder.Path()), IsEmpty());
}

TEST_F(LoadListTest, AppendsEveryLineInItsOrder) {
  EXPECT_THAT(LoadedFrom("user@b[1].txt\r\nuser@a[2].txt\r\nuser@b[1].txt\r\n"),
              ElementsAre("user@b[1].txt", "user@a[2].txt", "user@b[1].txt"));
}

TEST_F(LoadListTest, EmptiesTheListFirst) {
  Fill({"from before"});
  EXPECT_THAT(LoadedFrom("name\r\n"), ElementsAre("name"));
  EXPECT_THAT(LoadedFrom(""), IsEmpty());
}

TEST_F(LoadListTest, TakesAMissingFileForAnEmptyList) {
  for (const std::string& path : {folder / "missing", folder / "none\\missing"}) {
    Fill({"from before"});
    EXPECT_TRUE(LoadList(list, At(path))) << path;
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_FALSE(IsThere(path));
  }
}

TEST_F(LoadListTest, LeavesTheListEmptyAndSaysSoWhenTheFileCannotBeRead) {
  const std::string file = folder.File("list", "name\r\n");
  const UniqueFile holder = Hold(file, 0);
  ASSERT_TRUE(holder);
  Fill({"from before"});
  EXPECT_FALSE(LoadList(list, At(file)));
  EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(LoadListTest, LeavesTheListEmptyAndSaysSoForAFolder) {
  Fill({"from before"});
  EXPECT_FALSE(LoadList(list, At(folder.Path())));
  EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(LoadListTest, ReadsAFileThatAnotherProgramHasOpenForWriting) {
  const std::string file = folder.File("list", "name\r\n");
  const UniqueFile holder(
      ::CreateFileA(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(holder);
  EXPECT_TRUE(LoadList(list, At(file)));
  EXPECT_THAT(Lines(), ElementsAre("name"));
}

TEST_F(LoadListTest, ReadsAReadOnlyFile) {
  const std::string file = folder.File("list", "name\r\n");
  ::SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_TRUE(LoadList(list, At(file)));
  EXPECT_THAT(Lines(), ElementsAre("name"));
}

TEST_F(LoadListTest, EndsAFieldAtACommaAndDropsTheQuotesAroundOne) {
  EXPECT_THAT(LoadedFrom("one,two\r\n\"three\",\"four, five\"\r\nsix"),
              ElementsAre("one", "two", "three", "four, five", "six"));
}

TEST_F(LoadListTest, EndsAFieldAtABareLfAndABareCr) {
  EXPECT_THAT(LoadedFrom("one\ntwo\rthree"), ElementsAre("one", "two", "three"));
}

TEST_F(LoadListTest, LeavesNulBytesOut) {
  EXPECT_THAT(LoadedFrom(std::string("o\0ne\r\n\0\0two\r\n", 11)), ElementsAre("one", "two"));
}

TEST_F(LoadListTest, TakesEveryByteThatIsNoSeparator) {
  std::string name;
  for (int byte = 1; byte < 256; ++byte)
    if (std::string("\r\n,\"").find(static_cast<char>(byte)) == std::string::npos) name += static_cast<char>(byte);
  EXPECT_THAT(LoadedFrom(name + "\r\n"), ElementsAre(name));
  EXPECT_EQ(Saved(), name + "\r\n");
}

TEST_F(LoadListTest, TakesAMegabyteOnOneLine) {
  const std::string name(1 << 20, 'x');
  EXPECT_THAT(LoadedFrom(name), ElementsAre(name));
  EXPECT_EQ(Saved(), name + "\r\n");
}

TEST_F(LoadListTest, GivesBackTenThousandLines) {
  const Names names = Numbered(10000);
  EXPECT_EQ(LoadedFrom(AsFile(names)), names);
  EXPECT_EQ(Saved(), AsFile(names));
}

TEST_F(LoadListTest, GivesANameWithACommaBackAsTwo) {
  Fill({"user@a,b[1].txt", "user@c[1].txt"});
  SaveList(list, At(folder / "list"));
  EXPECT_TRUE(LoadList(list, At(folder / "list")));
  EXPECT_THAT(Lines(), ElementsAre("user@a", "b[1].txt", "user@c[1].txt"));
}

TEST_F(LoadListTest, GivesANameInQuotesBackWithoutThem) {
  Fill({"\"user@a[1].txt\""});
  SaveList(list, At(folder / "list"));
  EXPECT_TRUE(LoadList(list, At(folder / "list")));
  EXPECT_THAT(Lines(), ElementsAre("user@a[1].txt"));
}

TEST_F(LoadListTest, LetsWindowEventsRunAfterEachLine) {
  int lines = -1;
  events.AtTheNext([&] { lines = list.ListCount(); });
  EXPECT_EQ(LoadedFrom("one\r\ntwo\r\nthree\r\n").size(), 3u);
  EXPECT_EQ(lines, 1);
}

TEST_F(LoadListTest, EndsWithTheLineAtWhichItIsCutShort) {
  bool cut = false;
  events.AtTheNext([&] { cut = true; });
  EXPECT_TRUE(LoadList(list, At(folder.File("list", "one\r\ntwo\r\nthree\r\n")), &cut));
  EXPECT_THAT(Lines(), ElementsAre("one"));
}

TEST_F(LoadListTest, LeavesTheListWithALengthToScroll) {
  LoadedFrom("short\r\n" + std::string(300, 'W') + "\r\nshort\r\n");
  const LRESULT wide = ::SendMessageA(list.Handle(), LB_GETHORIZONTALEXTENT, 0, 0);
  EXPECT_GT(wide, 300 * 5) << "pixels";
  LoadedFrom("short\r\n");
  EXPECT_LT(::SendMessageA(list.Handle(), LB_GETHORIZONTALEXTENT, 0, 0), 200) << "pixels";
}
