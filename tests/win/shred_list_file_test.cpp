// The scheduled list between the panel and its file "QUELLIX_Shred" in the program's folder. The panel has no window here,
// as at the start of the program; the test program's folder is C:\test.
#include "shred/fraShred.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ansi_paths.h"
#include "main_window_stub.h"
#include "message_box_user.h"
#include "panel_for_tests.h"
#include "platform/handles.h"
#include "platform/runtime_error.h"
#include "scratch_folder.h"
#include "window_event.h"

using namespace platform;
using namespace shred;

namespace {

using testing::ElementsAre;
using Paths = std::vector<std::string>;

constexpr char kListFile[] = "C:\\test\\QUELLIX_Shred";
constexpr char kBeside[] = "C:\\test\\QUELLIX_Shred.tmp";

void RemoveWhatIsThere() {
  for (const char* path : {kListFile, kBeside}) {
    ::SetFileAttributesA(path, FILE_ATTRIBUTE_NORMAL);
    ::DeleteFileA(path);
    ::RemoveDirectoryA(path);
  }
}

class ShredListFile : public testing::Test {
 protected:
  void SetUp() override {
    RemoveWhatIsThere();
    Err.Clear();
  }
  void TearDown() override {
    RemoveWhatIsThere();
    EXPECT_EQ(Err.Number(), 0) << "an error is left pending: " << Err.Description();
  }

  Paths Lines() const {
    Paths lines;
    for (int line = 0; line < filled.lstFiles.ListCount(); ++line) lines.push_back(TextOf(filled.lstFiles.Item(line)));
    return lines;
  }

  void Fill(const Paths& paths) {
    for (const std::string& path : paths) filled.lstFiles.AddItem(path);
  }

  Paths LoadedFrom(const std::string& bytes) {
    WriteWhole(kListFile, bytes);
    panel.LoadFiles();
    return Lines();
  }

  // And tells its caller why.
  void ExpectSavingLeavesTheOldList(int why) {
    Fill({"new"});
    EXPECT_EQ(failureOf([&] { panel.SaveSettingsToFile(); }).number, why);
    EXPECT_EQ(Lines(), Paths{"new"});
  }

  MainWindowStub window;
  PanelForTests filled{window};
  fraShred& panel = filled.panel;
};
using LoadFilesTest = ShredListFile;
using SaveSettingsToFileTest = ShredListFile;

const Paths kThreePaths = {"C:\\work\\c.txt", "C:\\my work\\a, b.txt", "C:\\work\\a.txt"};
constexpr char kTextOfThem[] = "C:\\work\\c.txt\r\nC:\\my work\\a, b.txt\r\nC:\\work\\a.txt\r\n";

}  // namespace

TEST_F(LoadFilesTest, PutsTheFilesLinesInTheListInTheirOrder) { EXPECT_EQ(LoadedFrom(kTextOfThem), kThreePaths); }

TEST_F(LoadFilesTest, PutsThemInPlaceOfWhatIsThere) {
  Fill({"old", "older"});
  EXPECT_EQ(LoadedFrom(kTextOfThem), kThreePaths);
}

TEST_F(LoadFilesTest, LeavesTheListWhenThereIsNoFile) {
  Fill({"old"});
  panel.LoadFiles();
  EXPECT_EQ(Lines(), Paths{"old"});
  EXPECT_FALSE(IsThere(kListFile));
}

TEST_F(LoadFilesTest, EmptiesTheListForAnEmptyFile) {
  Fill({"old"});
  EXPECT_EQ(LoadedFrom(""), Paths());
}

TEST_F(LoadFilesTest, TakesBareLfALastLineWithoutEndAndNulBytes) {
  EXPECT_THAT(LoadedFrom(std::string("one\ntwo\r\n\r\nth\0ree", 18)), ElementsAre("one", "two", "", "three"));
}

TEST_F(LoadFilesTest, ReadsAFileThatIsReadOnlyAndHiddenAndLeavesItSo) {
  WriteWhole(kListFile, kTextOfThem);
  constexpr DWORD kBoth = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN;
  ::SetFileAttributesA(kListFile, kBoth);
  panel.LoadFiles();
  EXPECT_EQ(Lines(), kThreePaths);
  EXPECT_EQ(::GetFileAttributesA(kListFile) & kBoth, kBoth);
}

TEST_F(LoadFilesTest, LeavesTheListWhenThatNameIsAFolder) {
  ::CreateDirectoryA(kListFile, nullptr);
  Fill({"old"});
  panel.LoadFiles();
  EXPECT_EQ(Lines(), Paths{"old"});
}

TEST_F(LoadFilesTest, LeavesTheListWhenAnotherProgramHoldsTheFile) {
  WriteWhole(kListFile, kTextOfThem);
  const UniqueFile holder(::CreateFileA(kListFile, GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(holder);
  Fill({"old"});
  panel.LoadFiles();
  EXPECT_EQ(Lines(), Paths{"old"});
}

TEST_F(LoadFilesTest, FillsTheListAloneSoThatARunFindsNothingToShred) {
  const ScratchFolder folder;
  const MessageBoxUser user;
  const std::string file = folder.File("mine.txt");
  LoadedFrom(file + "\r\n");
  panel.ShredDelete();
  ASSERT_EQ(user.Boxes().size(), 1u);
  EXPECT_EQ(user.Boxes()[0].text, "Error: Enter a file for shredding!");
  EXPECT_EQ(ReadWhole(file), "content");
  EXPECT_EQ(Lines(), Paths{file});
}

TEST_F(LoadFilesTest, LetsEventsRunBeforeItReads) {
  WriteWhole(kListFile, "C:\\before\r\n");
  const WindowEvents events;
  events.AtTheNext([] { WriteWhole(kListFile, "C:\\meanwhile\r\n"); });
  panel.LoadFiles();
  EXPECT_EQ(Lines(), Paths{"C:\\meanwhile"});
}

TEST_F(SaveSettingsToFileTest, WritesEachLineFollowedByCrLf) {
  Fill(kThreePaths);
  panel.SaveSettingsToFile();
  EXPECT_EQ(ReadWhole(kListFile), kTextOfThem);
  EXPECT_FALSE(IsThere(kBeside));
}

TEST_F(SaveSettingsToFileTest, WritesAnEmptyFileForAnEmptyList) {
  WriteWhole(kListFile, kTextOfThem);
  panel.SaveSettingsToFile();
  EXPECT_TRUE(IsThere(kListFile));
  EXPECT_EQ(ReadWhole(kListFile), "");
}

TEST_F(SaveSettingsToFileTest, WritesOverAFileThatIsReadOnlyHiddenAndLonger) {
  WriteWhole(kListFile, std::string(5000, 'x'));
  ::SetFileAttributesA(kListFile, FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  Fill(kThreePaths);
  panel.SaveSettingsToFile();
  EXPECT_EQ(ReadWhole(kListFile), kTextOfThem);
}

TEST_F(SaveSettingsToFileTest, IsUndoneByLoading) {
  Paths paths;
  for (int number = 0; number < 5000; ++number) paths.push_back("C:\\work\\file " + std::to_string(number) + ", old.txt");
  Fill(paths);
  panel.SaveSettingsToFile();
  filled.lstFiles.Clear();
  panel.LoadFiles();
  EXPECT_EQ(Lines(), paths);
}

TEST_F(SaveSettingsToFileTest, KeepsNamesThatTheCodePageLacksOrHalfAPairIsIn) {
  const std::vector<WideText> lines = {L"C:\\a.txt", L"C:\\\u0141ukasz\\\u4E88\u5B9A\u8868.txt", L"C:\\\uFF41\uFF3C\uFF1A",
                                       L"C:\\\xD83D"};
  for (const WideText& line : lines) filled.lstFiles.AddItem(line);
  panel.SaveSettingsToFile();
  EXPECT_TRUE(ReadWhole(kListFile).starts_with("\xEF\xBB\xBF"));
  filled.lstFiles.Clear();
  panel.LoadFiles();
  for (int line = 0; line < 4; ++line) EXPECT_EQ(filled.lstFiles.Item(line), lines[static_cast<std::size_t>(line)]);
  filled.lstFiles.RemoveItem(3);
  filled.lstFiles.RemoveItem(2);
  filled.lstFiles.RemoveItem(1);
  panel.SaveSettingsToFile();
  EXPECT_EQ(ReadWhole(kListFile), "C:\\a.txt\r\n") << "plain again";
}

// A save that fails leaves the old list whole.

TEST_F(SaveSettingsToFileTest, LeavesTheOldListThatAnotherProgramHolds) {
  WriteWhole(kListFile, kTextOfThem);
  for (const DWORD share : {0ul, static_cast<DWORD>(FILE_SHARE_READ)}) {
    const UniqueFile holder(::CreateFileA(kListFile, GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(holder);
    filled.lstFiles.Clear();
    ExpectSavingLeavesTheOldList(kPermissionDenied);
  }
  EXPECT_EQ(ReadWhole(kListFile), kTextOfThem);
  EXPECT_FALSE(IsThere(kBeside));
}

TEST_F(SaveSettingsToFileTest, LeavesTheOldListWhenNothingCanBeWrittenBesideIt) {
  WriteWhole(kListFile, kTextOfThem);
  ::CreateDirectoryA(kBeside, nullptr);
  ExpectSavingLeavesTheOldList(kPermissionDenied);
  EXPECT_EQ(ReadWhole(kListFile), kTextOfThem);
}

TEST_F(SaveSettingsToFileTest, LeavesAFolderOfThatName) {
  ::CreateDirectoryA(kListFile, nullptr);
  ExpectSavingLeavesTheOldList(kAccessError);
  EXPECT_NE(::GetFileAttributesA(kListFile) & FILE_ATTRIBUTE_DIRECTORY, 0u);
  EXPECT_FALSE(IsThere(kBeside));
}
