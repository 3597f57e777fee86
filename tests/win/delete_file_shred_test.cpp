// What shredding leaves on the disk, seen through a second name of the file, and what it reports. The machine is off line
// unless a test makes it so; reports are counted either way.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "../logic/support/expected_overwrite.h"
#include "ansi_paths.h"
#include "connection.h"
#include "file_calls.h"
#include "import_hook.h"
#include "message_box_user.h"
#include "platform/ErroHandle.h"
#include "platform/message_pump.h"
#include "platform/native_files.h"
#include "scratch_folder.h"
#include "shred/modShred.h"

using namespace platform;
using namespace shred;

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kItemsAtLevel0 = 110;
constexpr int kItemsAtLevel1 = 28 * 10 + 110;

struct Level {
  const char* text;
  int repeatCount;
};
constexpr Level kLevels[] = {{"0", 0}, {"0.25", 2}, {"1", 10}, {"2.5", 25}, {"50", 500}};

// How a file of these bytes looks after the overwrite and before the deletion.
std::string Overwritten(const std::string& bytes, int repeatCount) {
  const std::string sequence = ExpectedOverwrite(repeatCount);
  return sequence + (bytes.size() > sequence.size() ? bytes.substr(sequence.size()) : std::string());
}

std::string SomeBytes(std::size_t size) {
  std::string bytes(size, ' ');
  for (std::size_t at = 0; at < size; ++at) bytes[at] = static_cast<char>('a' + at % 23);
  return bytes;
}

UniqueFile Hold(const std::string& path, DWORD access, DWORD share) {
  UniqueFile holder(::CreateFileA(path.c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr));
  EXPECT_TRUE(holder) << path << " cannot be held, system error " << ::GetLastError();
  return holder;
}

std::size_t Requests() {
  const std::string log = ReadWhole("C:\\test\\requests.txt");
  return static_cast<std::size_t>(std::count(log.begin(), log.end(), '\n'));
}

class DeleteFileShredTest : public testing::Test {
 protected:
  void SetUp() override {
    Err.Clear();
    GoOffline();
  }
  void TearDown() override {
    AnsiNamesOnlyForTests = false;
    ::SetCurrentDirectoryA("C:\\test");
    EXPECT_EQ(Err.Number(), 0) << "an error is left pending: " << Err.Description();
  }

  // A second name of the file: what it shows after the first is deleted was written before the deletion.
  std::string SecondName(const std::string& path) const {
    const std::string second = path + " by its second name";
    ::DeleteFileA(second.c_str());
    EXPECT_TRUE(::CreateHardLinkA(second.c_str(), path.c_str(), nullptr));
    return second;
  }

  // Shreds and tells how many failures were reported.
  static int Shred(const std::string& path, const std::string& level) {
    const ReportBurst burst;
    DeleteFileShred(PathOf(Widen(path)), level);
    return burst.ReportsForTests();
  }

  void ExpectOverwrittenAndDeleted(std::size_t size) const {
    const std::string bytes = SomeBytes(size);
    for (const Level& level : kLevels) {
      const std::string file = folder.File("file.txt", bytes);
      const std::string second = SecondName(file);
      EXPECT_EQ(Shred(file, level.text), 0) << "level " << level.text;
      EXPECT_FALSE(IsThere(file)) << "level " << level.text;
      EXPECT_TRUE(ReadWhole(second) == Overwritten(bytes, level.repeatCount)) << "level " << level.text;
    }
  }

  // A file that cannot be opened: the opening, every item and the deletion fail, each on its own.
  void ExpectEachFailureReported(const std::string& path) const {
    EXPECT_EQ(Shred(path, "0"), 1 + kItemsAtLevel0 + 1) << path;
    EXPECT_EQ(Shred(path, "1"), 1 + kItemsAtLevel1 + 1) << path;
  }

  std::vector<std::string> Texts() const { return user.Texts(); }

  ScratchFolder folder;
  MessageBoxUser user;
};
using ShredFileTest = DeleteFileShredTest;

// Of the functions that take the place of the system's.
int calls;
int failingCall;
DWORD failWith;
std::string watched;
std::size_t lengthAtTheFlush;
std::vector<std::size_t> written;
const auto systemWriteFile = importedWriteFile;
const auto systemFlushFileBuffers = importedFlushFileBuffers;

BOOL WINAPI FailOneWrite(HANDLE file, const void* bytes, DWORD size, DWORD* done, OVERLAPPED* overlapped) {
  written.push_back(size);
  if (++calls != failingCall) return systemWriteFile(file, bytes, size, done, overlapped);
  ::SetLastError(failWith);
  return FALSE;
}

// As a disk does that is full in the middle of the block: no failure, and fewer bytes.
BOOL WINAPI WriteHalfOnce(HANDLE file, const void* bytes, DWORD size, DWORD* done, OVERLAPPED* overlapped) {
  return systemWriteFile(file, bytes, ++calls == 1 ? size / 2 : size, done, overlapped);
}

BOOL WINAPI LookAtTheFlush(HANDLE file) {
  ++calls;
  lengthAtTheFlush = IsThere(watched) ? ::GetFileSize(file, nullptr) : 0;
  return systemFlushFileBuffers(file);
}

BOOL WINAPI FailToFlush(HANDLE) {
  ::SetLastError(ERROR_IO_DEVICE);
  return FALSE;
}

int ticks;
void CALLBACK CountTick(HWND, UINT, UINT_PTR, DWORD) { ++ticks; }

}  // namespace

TEST_F(DeleteFileShredTest, GrowsAFileOfAHundredBytesToTheLengthOfTheSequence) { ExpectOverwrittenAndDeleted(100); }

TEST_F(DeleteFileShredTest, LeavesWhatAFileOfTenThousandBytesHoldsBehindTheSequence) { ExpectOverwrittenAndDeleted(10000); }

TEST_F(DeleteFileShredTest, WritesTheSequenceIntoAnEmptyFileToo) { ExpectOverwrittenAndDeleted(0); }

TEST_F(DeleteFileShredTest, LeavesTheLengthOfAFileThatIsAsLongAsTheSequence) {
  for (const std::size_t size : {959u, 960u, 961u}) {
    const std::string file = folder.File("file.txt", SomeBytes(size));
    const std::string second = SecondName(file);
    EXPECT_EQ(Shred(file, "1"), 0);
    EXPECT_TRUE(ReadWhole(second) == Overwritten(SomeBytes(size), 10)) << size << " bytes";
  }
}

TEST_F(DeleteFileShredTest, DoesTheSameByAnsiNames) {
  AnsiNamesOnlyForTests = true;
  ExpectOverwrittenAndDeleted(100);
}

TEST_F(DeleteFileShredTest, TouchesNoOtherFile) {
  const std::string file = folder.File("file.txt");
  for (const char* name : {"file.txt2", "file", "file.tx"}) folder.File(name, "the content");
  EXPECT_EQ(Shred(file, "1"), 0);
  EXPECT_THAT(NamesIn(folder.Path()), testing::UnorderedElementsAre("file.txt2", "file", "file.tx"));
  for (const char* name : {"file.txt2", "file", "file.tx"}) EXPECT_EQ(ReadWhole(folder / name), "the content");
}

TEST_F(DeleteFileShredTest, TakesTheLevelAsItsBoxHoldsIt) {
  const struct {
    const char* level;
    int repeatCount;
    int reports;
  } rows[] = {{" 5 ", 50, 0}, {"1e3", 10000, 0}, {"3276.7", 32767, 0}, {"-1", 0, 0},    {"", 0, 1},
              {"abc", 0, 1},  {"0,5", 0, 1},     {"3276.8", 0, 1},     {"1e308", 0, 1}, {"1e400", 0, 1}};
  for (const auto& row : rows) {
    const std::string file = folder.File("file.txt");
    const std::string second = SecondName(file);
    EXPECT_EQ(Shred(file, row.level), row.reports) << "level [" << row.level << "]";
    EXPECT_FALSE(IsThere(file)) << "level [" << row.level << "]";
    EXPECT_TRUE(ReadWhole(second) == ExpectedOverwrite(row.repeatCount)) << "level [" << row.level << "]";
  }
}

TEST_F(DeleteFileShredTest, SaysWhatIsWrongWithALevel) {
  GoOnline();
  Shred(folder.File("file.txt"), "abc");
  Shred(folder.File("file.txt"), "3276.8");
  EXPECT_THAT(Texts(), ElementsAre("modShred,DeleteFileShred13Type mismatch", "modShred,DeleteFileShred6Overflow"));
}

TEST_F(DeleteFileShredTest, LeavesAReadOnlyFileUnchanged) {
  const std::string file = folder.File("kept.txt", "the content");
  ::SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_READONLY);
  ExpectEachFailureReported(file);
  EXPECT_EQ(ReadWhole(file), "the content");
  EXPECT_EQ(::GetFileAttributesA(file.c_str()) & FILE_ATTRIBUTE_READONLY, FILE_ATTRIBUTE_READONLY);
}

TEST_F(DeleteFileShredTest, LeavesAFileThatIsLockedForWritingUnchanged) {
  const std::string file = folder.File("kept.txt", "the content");
  const UniqueFile holder = Hold(file, GENERIC_READ, FILE_SHARE_READ);
  EXPECT_TRUE(Validate(PathOf(Widen(file))));
  ExpectEachFailureReported(file);
  EXPECT_EQ(ReadWhole(file), "the content");
}

TEST_F(DeleteFileShredTest, LeavesAFileThatIsLockedForReadingUnchanged) {
  const std::string file = folder.File("kept.txt", "the content");
  UniqueFile holder = Hold(file, GENERIC_READ, 0);
  ExpectEachFailureReported(file);
  holder.reset();
  EXPECT_EQ(ReadWhole(file), "the content");
}

TEST_F(DeleteFileShredTest, OverwritesAFileThatAnotherProgramReadsAndReportsTheDeletionAlone) {
  const std::string file = folder.File("file.txt");
  UniqueFile holder = Hold(file, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
  EXPECT_EQ(Shred(file, "1"), 1);
  holder.reset();
  EXPECT_TRUE(ReadWhole(file) == ExpectedOverwrite(10));
}

TEST_F(DeleteFileShredTest, DoesNotMakeAFileThatHasVanished) {
  ExpectEachFailureReported(folder / "vanished.txt");
  ExpectEachFailureReported(folder / "no folder\\vanished.txt");
  ExpectEachFailureReported("Q:\\vanished.txt");
  EXPECT_THAT(NamesIn(folder.Path()), IsEmpty());
}

TEST_F(DeleteFileShredTest, RefusesWhatIsNoFile) {
  const std::string file = folder.File("file.txt", "the content");
  ::SetCurrentDirectoryA(folder.Path().c_str());
  for (const std::string& path :
       {std::string(), std::string(" "), folder.Path(), folder.Path() + "\\", folder / "*.*", folder / "file.???",
        std::string("C:\\"), std::string("C:"), std::string("NUL"), std::string("\\\\.\\C:"),
        std::string("\\\\.\\PhysicalDrive0"), folder / std::string(300, 'n')})
    ExpectEachFailureReported(path);
  EXPECT_EQ(ReadWhole(file), "the content");
}

TEST_F(DeleteFileShredTest, WritesToNoDevice) {
  calls = failingCall = 0;
  const ImportHook hook(importedWriteFile, &FailOneWrite);
  for (const char* device : {"NUL", "C:\\test\\COM1", "\\\\.\\C:", "\\\\.\\PhysicalDrive0"})
    ExpectEachFailureReported(device);
  EXPECT_EQ(calls, 0);
  GoOnline();
  Shred("NUL", "0");
  EXPECT_THAT(Texts(),
              ElementsAre("modShred,DeleteFileShred52Bad file name or number", "modShred,DeleteFileShred76Path not found"));
}

TEST_F(DeleteFileShredTest, TakesAPathFromTheCurrentFolder) {
  folder.File("file.txt");
  const std::string second = SecondName(folder / "file.txt");
  ::SetCurrentDirectoryA(folder.Path().c_str());
  EXPECT_EQ(Shred("file.txt", "0"), 0);
  EXPECT_TRUE(ReadWhole(second) == ExpectedOverwrite(0));
}

TEST_F(DeleteFileShredTest, AsksOnceForAFileWhetherTheMachineIsOnLineAndShowsEachMessageOnce) {
  const std::string file = folder.File("kept.txt", "the content");
  const UniqueFile holder = Hold(file, GENERIC_READ, FILE_SHARE_READ);
  GoOnline();
  const std::size_t before = Requests();
  DeleteFileShred(At(file), "50");
  EXPECT_EQ(Requests() - before, 1u);
  EXPECT_THAT(Texts(), ElementsAre("modShred,DeleteFileShred70Permission denied",
                                   "modShred,DeleteFileShred52Bad file name or number"));
}

TEST_F(DeleteFileShredTest, SaysSoForEveryFileUnlessItsCallerHoldsABurst) {
  const std::string file = folder.File("kept.txt");
  const UniqueFile holder = Hold(file, GENERIC_READ, FILE_SHARE_READ);
  GoOnline();
  DeleteFileShred(At(file), "0");
  DeleteFileShred(At(file), "0");
  EXPECT_EQ(user.Boxes().size(), 4u);
  const ReportBurst burst;
  for (int i = 0; i < 10; ++i) DeleteFileShred(At(file), "0");
  EXPECT_EQ(user.Boxes().size(), 6u);
  EXPECT_EQ(burst.ReportsForTests(), 10 * (1 + kItemsAtLevel0 + 1));
}

TEST_F(DeleteFileShredTest, WritesNothingThroughALink) {
  const std::string file = folder.File("file.txt", "somebody else's");
  const std::string second = SecondName(file);
  {
    const FileCalls calls;
    calls.ShowAsLink(file);
    EXPECT_EQ(Shred(file, "0"), 1 + kItemsAtLevel0);
  }
  EXPECT_FALSE(IsThere(file)) << "the link goes";
  EXPECT_EQ(ReadWhole(second), "somebody else's");
}

TEST_F(DeleteFileShredTest, LeavesAReparsePointThatIsTheFileItselfAndSaysSo) {
  for (const DWORD tag : {0x80000013u /* deduplicated */, 0xC0000004u /* offline */, 0x9000001Au /* in a cloud */, 0u}) {
    const std::string file = folder.File("file.txt", "the content");
    const FileCalls calls;
    calls.ShowAsLink(file, tag);
    ExpectEachFailureReported(file);
    EXPECT_EQ(ReadWhole(file), "the content") << std::hex << tag;
  }
}

TEST_F(DeleteFileShredTest, LeavesTheTargetOfALinkThatTheSystemDoesNotTellOf) {
  ExpectEachFailureReported("C:\\plant\\link to a file.txt");
  EXPECT_EQ(ReadWhole("C:\\outside\\canary.txt"), "some bytes");
  const ReportBurst burst;
  ::SetFileAttributesA("C:\\outside\\canary.txt", FILE_ATTRIBUTE_READONLY);
  ShredFile(At("C:\\plant\\link to a file.txt"), "0");
  EXPECT_EQ(ReadWhole("C:\\outside\\canary.txt"), "some bytes");
  EXPECT_NE(::GetFileAttributesA("C:\\outside\\canary.txt") & FILE_ATTRIBUTE_READONLY, 0u);
}

TEST_F(DeleteFileShredTest, ShredsAFileInAFolderThatALinkLeadsTo) {
  EXPECT_EQ(Shred("C:\\plant\\link to a folder\\chosen.txt", "0"), 0);
  EXPECT_FALSE(IsThere("C:\\outside\\folder\\chosen.txt"));
}

// The message about the one leaves time for the other.
TEST_F(DeleteFileShredTest, DeletesNoFileThatTookThePlaceOfTheOneItCouldNotOpen) {
  const std::string file = folder.File("file.txt", "the content");
  UniqueFile holder = Hold(file, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE);
  GoOnline();
  user.AtTheNext([&] {
    holder.reset();
    ::MoveFileA(file.c_str(), (folder / "moved.txt").c_str());
    folder.File("file.txt", "another one");
  });
  Shred(file, "0");
  EXPECT_EQ(ReadWhole(file), "another one");
  EXPECT_EQ(ReadWhole(folder / "moved.txt"), "the content");
}

TEST_F(DeleteFileShredTest, ShowsNothingOffLine) {
  ExpectEachFailureReported(folder / "missing");
  EXPECT_EQ(user.Boxes().size(), 0u);
}

TEST_F(DeleteFileShredTest, TakesNoErrorFromBeforeForItsOwn) {
  Err.Set({kOverflow, "Overflow"});
  EXPECT_EQ(Shred(folder.File("file.txt"), "1"), 0);
  Err.Clear();
}

TEST_F(DeleteFileShredTest, WritesABlockAtATime) {
  calls = failingCall = 0;
  written.clear();
  const std::string file = folder.File("file.txt");
  const ImportHook hook(importedWriteFile, &FailOneWrite);
  Shred(file, "50");
  Shred(folder.File("file.txt"), "300");
  EXPECT_THAT(written, ElementsAre(26440u, 65536u, 65536u, 25368u));
}

TEST_F(DeleteFileShredTest, FailsEachItemOfABlockThatADeviceDoesNotTake) {
  calls = 0, failingCall = 1, failWith = ERROR_IO_DEVICE;
  const std::string file = folder.File("file.txt", SomeBytes(1000));
  const std::string second = SecondName(file);
  const ImportHook hook(importedWriteFile, &FailOneWrite);
  GoOnline();
  EXPECT_EQ(Shred(file, "1"), kItemsAtLevel1);
  EXPECT_THAT(Texts(), ElementsAre("modShred,DeleteFileShred57Device I/O error"));
  EXPECT_FALSE(IsThere(file)) << "it is deleted all the same";
  EXPECT_EQ(ReadWhole(second), SomeBytes(1000));
}

TEST_F(DeleteFileShredTest, GoesOnBehindABlockThatFailed) {
  calls = 0, failingCall = 2, failWith = ERROR_IO_DEVICE;
  const std::string file = folder.File("file.txt", "");
  const std::string second = SecondName(file);
  const ImportHook hook(importedWriteFile, &FailOneWrite);
  EXPECT_EQ(Shred(file, "300"), 9232 + 33000 + 3518) << "items of two, one and four bytes in the second block";
  std::string expected = ExpectedOverwrite(3000);
  EXPECT_TRUE(ReadWhole(second) == expected.erase(65536, 65536));
}

TEST_F(DeleteFileShredTest, WritesABlockOnceMoreOfWhichOnlyAPartWasTaken) {
  calls = 0;
  const std::string file = folder.File("file.txt", "");
  const std::string second = SecondName(file);
  const ImportHook hook(importedWriteFile, &WriteHalfOnce);
  EXPECT_EQ(Shred(file, "1"), 0);
  EXPECT_TRUE(ReadWhole(second) == ExpectedOverwrite(10));
  EXPECT_EQ(calls, 1 + kItemsAtLevel1) << "item by item";
}

TEST_F(DeleteFileShredTest, FlushesTheBytesToTheDiskBeforeItDeletes) {
  calls = 0;
  watched = folder.File("file.txt");
  const ImportHook hook(importedFlushFileBuffers, &LookAtTheFlush);
  EXPECT_EQ(Shred(watched, "1"), 0);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(lengthAtTheFlush, 960u) << "all of it is written and the file is still there";
}

TEST_F(DeleteFileShredTest, ReportsAFlushThatFailsOnceAndDeletes) {
  const std::string file = folder.File("file.txt");
  const ImportHook hook(importedFlushFileBuffers, &FailToFlush);
  EXPECT_EQ(Shred(file, "1"), 1);
  EXPECT_FALSE(IsThere(file));
}

TEST_F(DeleteFileShredTest, FillsADiskToItsEndAndDeletesTheFile) {
  const char* drive = std::getenv("QUELLIX_TEST_SMALL_DRIVE");
  // Runs where the preparation may mount a drive of its own.
  if (drive == nullptr) GTEST_SKIP() << "no small drive could be made";
  const ScratchFolder small(std::string(drive) + "\\scratch");
  const std::string file = small.File("file.txt", SomeBytes(100));
  const std::string second = small / "second name";
  ASSERT_TRUE(::CreateHardLinkA(second.c_str(), file.c_str(), nullptr));
  DWORD sectors = 0, bytes = 0, clusters = 0, all = 0;
  ASSERT_TRUE(::GetDiskFreeSpaceA((std::string(drive) + "\\").c_str(), &sectors, &bytes, &clusters, &all));
  const DWORD cluster = sectors * bytes;
  small.File("filler", std::string((clusters - 2) * cluster, 'x'));
  GoOnline();
  const int reports = Shred(file, "50");
  const std::string left = ReadWhole(second);
  EXPECT_EQ(left.size(), 3 * cluster);
  EXPECT_EQ(left.compare(0, left.size() - 4, ExpectedOverwrite(500), 0, left.size() - 4), 0);
  EXPECT_GT(reports, 1000);
  EXPECT_THAT(Texts(), ElementsAre("modShred,DeleteFileShred61Disk full"));
  EXPECT_FALSE(IsThere(file));
}

TEST_F(ShredFileTest, TakesTheAttributesAwayAndShreds) {
  const std::string file = folder.File("file.txt", SomeBytes(100));
  const std::string second = SecondName(file);
  ::SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  const ReportBurst burst;
  ShredFile(At(file), "1");
  EXPECT_EQ(burst.ReportsForTests(), 0);
  EXPECT_FALSE(IsThere(file));
  EXPECT_TRUE(ReadWhole(second) == ExpectedOverwrite(10));
}

TEST_F(ShredFileTest, SkipsWhatCannotBeReadWithoutAWord) {
  const std::string file = folder.File("kept.txt", "the content");
  ::SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_READONLY);
  UniqueFile holder = Hold(file, GENERIC_READ, 0);
  const ReportBurst burst;
  for (const std::string& path : {file, folder / "missing", folder.Path(), std::string(), folder / "*.*"})
    ShredFile(At(path), "1");
  EXPECT_EQ(burst.ReportsForTests(), 0);
  holder.reset();
  EXPECT_EQ(ReadWhole(file), "the content");
  EXPECT_EQ(::GetFileAttributesA(file.c_str()) & FILE_ATTRIBUTE_READONLY, FILE_ATTRIBUTE_READONLY);
}

TEST_F(ShredFileTest, GivesTheAttributesBackWhereTheFileStays) {
  const std::string file = folder.File("kept.txt", "the content");
  constexpr DWORD kAll = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
  for (const bool ansi : {false, true}) {
    AnsiNamesOnlyForTests = ansi;
    ::SetFileAttributesA(file.c_str(), kAll);
    UniqueFile holder = Hold(file, GENERIC_READ, FILE_SHARE_READ);
    const ReportBurst burst;
    ShredFile(At(file), "0");
    holder.reset();
    EXPECT_EQ(ReadWhole(file), "the content");
    EXPECT_EQ(::GetFileAttributesA(file.c_str()) & kAll, kAll) << (ansi ? "by ANSI names" : "by wide names");
  }
}

TEST_F(ShredFileTest, LooksAtNoEventsInTheMiddleOfAFileNorAfterIt) {
  DoEvents();
  ticks = 0;
  ::PostThreadMessageA(::GetCurrentThreadId(), WM_TIMER, 1, reinterpret_cast<LPARAM>(&CountTick));
  for (int number = 0; number < 10; ++number) ShredFile(At(folder.File("file.txt")), "3276.7");
  EXPECT_EQ(ticks, 0);
  DoEvents();
  EXPECT_EQ(ticks, 1) << "the event was there";
}
