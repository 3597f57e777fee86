// The browser's index files, in the folders of the current user.
#include "cleaners/locked_index.h"

#include <gtest/gtest.h>

#include "ansi_paths.h"
#include "exchange.h"
#include "import_hook.h"
#include "platform/handles.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "platform/stop_request.h"
#include "scratch_folder.h"
#include "second_name.h"
#include "window_event.h"

using namespace cleaners;
using namespace platform;

namespace {

// What the system tells of an open file, with another length or another attribute.
DWORD shownLength = 0, shownAttributes = 0;

// The three files hold traces before each test; Wine makes none of them before it opens its cache.
class LockedIndexTest : public testing::Test {
 protected:
  void SetUp() override {
    Err.Clear(), StopErase = false;
    shownLength = shownAttributes = 0;
    ASSERT_NE(cookiesFolder, "");
    ASSERT_NE(historyFolder, "");
    ::CreateDirectoryA((historyFolder + "\\History.IE5").c_str(), nullptr);
    for (const std::string& file : Targets()) {
      ASSERT_FALSE(IsThere(file)) << file;
      WriteWhole(file, "the traces of " + file);
    }
  }
  void TearDown() override {
    StopErase = false;
    EXPECT_EQ(Err.Number(), 0) << "an error is left pending: " << Err.Description();
    for (const std::string& file : Targets()) {
      ::SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL);
      ::DeleteFileA(file.c_str());
      ::RemoveDirectoryA(file.c_str());
    }
  }

  std::vector<std::string> Targets() const { return {cookies, history, inner}; }
  static std::string TracesOf(const std::string& file) { return "the traces of " + file; }
  static std::string BlanksOf(const std::string& file) { return std::string(TracesOf(file).size(), ' '); }

  // What every target holds now, but for the one given.
  void ExpectBlankBut(const std::string& exception) const {
    for (const std::string& file : Targets()) {
      if (file == exception) continue;
      EXPECT_EQ(ReadWhole(file), BlanksOf(file)) << file;
    }
  }

  const std::string cookiesFolder = TextOf(FindSpecialFolder(kCookiesFolder));
  const std::string historyFolder = TextOf(FindSpecialFolder(kHistoryFolder));
  const std::string cookies = cookiesFolder + "\\index.dat";
  const std::string history = historyFolder + "\\index.dat";
  const std::string inner = historyFolder + "\\History.IE5\\index.dat";
  WindowEvents events;
};

UniqueFile Open(const std::string& path, DWORD access, DWORD share) {
  return UniqueFile(::CreateFileA(path.c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr));
}

const auto systemInformation = importedGetFileInformationByHandle;

BOOL WINAPI ShowAnotherFile(HANDLE file, LPBY_HANDLE_FILE_INFORMATION facts) {
  const BOOL told = systemInformation(file, facts);
  if (shownLength != 0) facts->nFileSizeLow = shownLength;
  facts->dwFileAttributes |= shownAttributes;
  return told;
}

int writes = 0;
const auto systemWriteFile = importedWriteFile;

BOOL WINAPI WriteHalf(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD written, LPOVERLAPPED overlapped) {
  ++writes;
  return systemWriteFile(file, bytes, count / 2, written, overlapped);
}

// Without a text of 32 MB in the message when it fails.
// Compared at once: 96 megabytes are too many to look at one by one in a program that is not optimised.
bool IsBlank(const std::string& bytes) { return bytes == std::string(bytes.size(), ' '); }

}  // namespace

TEST(FindSpecialFolder, GivesAFoldersPath) {
  for (const SpecialFolder folder : {kCookiesFolder, kHistoryFolder, kDesktopFolder, kDocumentsFolder, kProfileFolder}) {
    const std::string path = TextOf(FindSpecialFolder(folder));
    const DWORD attributes = ::GetFileAttributesA(path.c_str());
    ASSERT_NE(attributes, INVALID_FILE_ATTRIBUTES) << folder;
    EXPECT_NE(attributes & FILE_ATTRIBUTE_DIRECTORY, 0u) << path;
    EXPECT_EQ(path.compare(0, 3, "C:\\"), 0) << path;
  }
}

TEST(FindSpecialFolder, GivesNothingForAPlaceThatIsNoFolderOfTheDiskOrUnknown) {
  constexpr int kControlPanel = 3, kRecycleBin = 10;
  for (const int identifier : {kControlPanel, kRecycleBin, 200, 9999, -1})
    EXPECT_EQ(FindSpecialFolder(identifier), Path()) << identifier;
}

TEST_F(LockedIndexTest, FillsAllThreeFilesWithBlanks) {
  ClearLockedIndexFiles();
  ExpectBlankBut("");
}

TEST_F(LockedIndexTest, KeepsTheLengthOfEachFile) {
  for (const std::size_t length : {0u, 1u, 1000u, 0xFFFFu, 0x10000u, 0x10001u, 32u * 1024 * 1024}) {
    for (const std::string& file : Targets()) WriteWhole(file, std::string(length, 'x'));
    ClearLockedIndexFiles();
    for (const std::string& file : Targets()) {
      const std::string bytes = ReadWhole(file);
      EXPECT_EQ(bytes.size(), length) << file;
      EXPECT_TRUE(IsBlank(bytes)) << file << " of " << length << " bytes";
    }
  }
}

TEST_F(LockedIndexTest, WritesNoLineEndsAndLeavesTheOldTextNowhere) {
  WriteWhole(cookies, std::string(500, '\n') + std::string("\r\n\0\x1A", 4) + std::string(496, '\xFF'));
  ClearLockedIndexFiles();
  EXPECT_EQ(ReadWhole(cookies), std::string(1000, ' '));
}

TEST_F(LockedIndexTest, PassesOverAFileThatAnotherProgramHolds) {
  for (const DWORD share :
       {0ul, static_cast<DWORD>(FILE_SHARE_READ), static_cast<DWORD>(FILE_SHARE_READ | FILE_SHARE_WRITE)}) {
    for (const std::string& held : Targets()) {
      for (const std::string& file : Targets()) WriteWhole(file, TracesOf(file));
      {
        const UniqueFile holder = Open(held, GENERIC_READ | GENERIC_WRITE, share);
        ASSERT_TRUE(holder);
        ClearLockedIndexFiles();
      }
      EXPECT_EQ(ReadWhole(held), TracesOf(held)) << "shared as " << share;
      ExpectBlankBut(held);
    }
  }
}

TEST_F(LockedIndexTest, PassesOverAReadOnlyFile) {
  ::SetFileAttributesA(history.c_str(), FILE_ATTRIBUTE_READONLY);
  // Runs for an ordinary user only: the superuser is let in, so that there is no failing open to look at.
  if (Open(history, GENERIC_WRITE, 0)) GTEST_SKIP() << "for the superuser Wine opens read-only files for writing";
  ClearLockedIndexFiles();
  EXPECT_EQ(ReadWhole(history), TracesOf(history));
  ExpectBlankBut(history);
}

TEST_F(LockedIndexTest, PassesOverAMissingFileAndMakesNone) {
  for (const std::string& missing : Targets()) {
    for (const std::string& file : Targets()) WriteWhole(file, TracesOf(file));
    ASSERT_TRUE(::DeleteFileA(missing.c_str()));
    ClearLockedIndexFiles();
    EXPECT_FALSE(IsThere(missing)) << missing;
    ExpectBlankBut(missing);
  }
}

TEST_F(LockedIndexTest, PassesOverAFolderOfThatName) {
  ASSERT_TRUE(::DeleteFileA(cookies.c_str()));
  ASSERT_TRUE(::CreateDirectoryA(cookies.c_str(), nullptr));
  WriteWhole(cookies + "\\index.dat", "content");
  ClearLockedIndexFiles();
  EXPECT_EQ(ReadWhole(cookies + "\\index.dat"), "content");
  ExpectBlankBut(cookies);
  ::DeleteFileA((cookies + "\\index.dat").c_str());
}

TEST_F(LockedIndexTest, PassesOverAMissingFolder) {
  const std::string folder = historyFolder + "\\History.IE5";
  ASSERT_TRUE(::MoveFileA(folder.c_str(), (historyFolder + "\\elsewhere").c_str()));
  ClearLockedIndexFiles();
  ExpectBlankBut(inner);
  EXPECT_FALSE(IsThere(folder));
  ASSERT_TRUE(::MoveFileA((historyFolder + "\\elsewhere").c_str(), folder.c_str()));
  EXPECT_EQ(ReadWhole(inner), TracesOf(inner));
}

TEST_F(LockedIndexTest, FillsHiddenFilesOfTheSystemAndLeavesThemHidden) {
  for (const std::string& file : Targets())
    ::SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  const DWORD before = ::GetFileAttributesA(cookies.c_str());
  ASSERT_NE(before & FILE_ATTRIBUTE_HIDDEN, 0u);
  ClearLockedIndexFiles();
  ExpectBlankBut("");
  EXPECT_EQ(::GetFileAttributesA(cookies.c_str()), before);
}

TEST_F(LockedIndexTest, TouchesNothingAfterAStop) {
  StopErase = true;
  ClearLockedIndexFiles();
  for (const std::string& file : Targets()) EXPECT_EQ(ReadWhole(file), TracesOf(file)) << file;
}

// The stop arrives while the first file that is there is written: its length and what the blanks have not reached stay, and
// those after it in the order stay as they are.
TEST_F(LockedIndexTest, TakesCookiesThenHistoryThenTheInnerHistoryAndEndsWithAStop) {
  const std::vector<std::string> order = Targets();
  const std::size_t length = 1024 * 1024, block = 0x10000;
  for (std::size_t first = 0; first < order.size(); ++first) {
    WriteWhole(order[first], std::string(length, 'x'));
    StopErase = false;
    events.AtTheNext([] { StopErase = true; });
    LetTheNextLookBeDue();
    ClearLockedIndexFiles();
    ASSERT_TRUE(events.HasRun());
    const std::string bytes = ReadWhole(order[first]);
    EXPECT_TRUE(bytes == std::string(block, ' ') + std::string(length - block, 'x')) << order[first];
    for (std::size_t later = first + 1; later < order.size(); ++later)
      EXPECT_EQ(ReadWhole(order[later]), TracesOf(order[later]));
    ASSERT_TRUE(::DeleteFileA(order[first].c_str()));
  }
}

// A name that is asked for its length and opened afterwards may mean two files.
TEST_F(LockedIndexTest, TakesTheLengthOfTheFileThatItHasOpened) {
  shownLength = 3;
  const ImportHook hook(importedGetFileInformationByHandle, &ShowAnotherFile);
  ClearLockedIndexFiles();
  for (const std::string& file : Targets()) EXPECT_EQ(ReadWhole(file), "   " + TracesOf(file).substr(3)) << file;
}

TEST_F(LockedIndexTest, PassesOverASparseFileAndAReparsePoint) {
  for (const DWORD attribute : {FILE_ATTRIBUTE_SPARSE_FILE, FILE_ATTRIBUTE_REPARSE_POINT}) {
    shownAttributes = attribute;
    const ImportHook hook(importedGetFileInformationByHandle, &ShowAnotherFile);
    ClearLockedIndexFiles();
    for (const std::string& file : Targets()) EXPECT_EQ(ReadWhole(file), TracesOf(file)) << file;
  }
}

// Whoever may write to the folder may give any file of the disk that name too.
TEST_F(LockedIndexTest, PassesOverAFileWithASecondName) {
  const ScratchFolder outside("C:\\outside");
  const std::string canary = outside.File("canary.txt", "not ours");
  ASSERT_TRUE(::DeleteFileA(history.c_str()));
  GiveSecondName(canary, history);
  ClearLockedIndexFiles();
  EXPECT_EQ(ReadWhole(canary), "not ours");
  ExpectBlankBut(history);
}

// A link that the system does not tell of as one: the file that was opened is elsewhere.
TEST_F(LockedIndexTest, PassesOverALink) {
  ExchangeForALink("C:\\links");
  ClearLockedIndexFiles();
  for (const std::string& file : Targets()) EXPECT_EQ(ReadWhole(file), "not ours") << file;
  ExchangeForALink("C:\\no links");
}

TEST_F(LockedIndexTest, EndsAFileWhereTheDiskTakesNoMore) {
  const ImportHook hook(importedWriteFile, &WriteHalf);
  writes = 0;
  ClearLockedIndexFiles();
  EXPECT_EQ(writes, 3) << "one for each file: a write that comes short is the last one";
}

TEST_F(LockedIndexTest, ChangesNothingElseInTheseFolders) {
  std::vector<std::string> beside;
  for (const std::string& folder : {cookiesFolder, historyFolder, historyFolder + "\\History.IE5"}) {
    for (const char* name : {"index.dat2", "index.da", "aindex.dat", "user@site[1].txt", "desktop.ini"}) {
      beside.push_back(folder + "\\" + name);
      WriteWhole(beside.back(), "content");
    }
  }
  beside.push_back("C:\\index.dat");
  WriteWhole(beside.back(), "content");
  const std::vector<std::string> namesBefore = NamesIn(historyFolder);
  ClearLockedIndexFiles();
  EXPECT_EQ(NamesIn(historyFolder), namesBefore);
  for (const std::string& file : beside) {
    EXPECT_EQ(ReadWhole(file), "content") << file;
    ::DeleteFileA(file.c_str());
  }
}

TEST_F(LockedIndexTest, ClosesTheFilesAgain) {
  ClearLockedIndexFiles();
  for (const std::string& file : Targets()) EXPECT_TRUE(Open(file, GENERIC_READ | GENERIC_WRITE, 0)) << file;
}
