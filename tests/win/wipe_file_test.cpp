#include "cleaners/wipe_file.h"

#include <gtest/gtest.h>

#include <bit>
#include <set>

#include "cleaners/locked_files.h"
#include "import_hook.h"
#include "late_calls.h"
#include "log_recorder.h"
#include "nothing_said.h"
#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/stop_request.h"
#include "platform/system_functions.h"
#include "platform/tally.h"
#include "platform/tally_text.h"
#include "scratch_folder.h"
#include "second_name.h"

using namespace cleaners;
using namespace platform;

namespace {

void WipeFile(const std::string& path, std::int16_t passes) { cleaners::WipeFile(PathOf(Widen(path)), passes); }

class WipeFileTest : public testing::Test {
 protected:
  void SetUp() override { Err.Clear(), StopErase = false; }
  void TearDown() override {
    StopErase = false;
    EXPECT_EQ(Err.Number(), 0) << "an error is left pending: " << Err.Description();
  }

  std::string SecondName(const std::string& path) const {
    GiveSecondName(path, folder / "second name");
    return folder / "second name";
  }

  std::string ReadOnlyFile() const {
    const std::string file = folder.File("kept.txt", "the content");
    ::SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_READONLY);
    return file;
  }

  ScratchFolder folder;
  LogRecorder log;
};
using FileExistsFsTest = WipeFileTest;

UniqueFile OpenForWriting(const std::string& path) {
  return UniqueFile(::CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
}

// What the wipers write, how often they open a file, and the clock that they make their fill characters of.
std::vector<std::string> writes;
int opens;
DWORD tick;

// Of the pauses between two tries.
DWORD slept;
UniqueFile holderOfAMoment;
void WINAPI NoteThePause(DWORD milliseconds) { slept += milliseconds; }
void WINAPI LetGoAfterASecondPause(DWORD milliseconds) {
  slept += milliseconds;
  if (slept > 100) holderOfAMoment.reset();
}

const auto systemWriteFile = importedWriteFile;
const auto systemCreateFile = importedCreateFileA;

BOOL WINAPI NoteTheWrite(HANDLE file, LPCVOID bytes, DWORD size, DWORD* done, OVERLAPPED* overlapped) {
  writes.emplace_back(static_cast<const char*>(bytes), size);
  return systemWriteFile(file, bytes, size, done, overlapped);
}

HANDLE WINAPI CountTheAnsiOpen(LPCSTR path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security, DWORD how, DWORD flags,
                               HANDLE like) {
  ++opens;
  return systemCreateFile(path, access, share, security, how, flags, like);
}

HANDLE WINAPI CountTheWideOpen(LPCWSTR path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security, DWORD how,
                               DWORD flags, HANDLE like) {
  ++opens;
  return ::CreateFileW(path, access, share, security, how, flags, like);
}

[[maybe_unused]] const bool replaced = (ReplaceFunction("CreateFileW", &CountTheWideOpen), true);

DWORD WINAPI NextTick() { return tick += 7; }
DWORD WINAPI SameTick() { return tick; }

// How many writes there were when the file was flushed, each time.
std::vector<std::size_t> writesWhenFlushed;
const auto systemFlushFileBuffers = importedFlushFileBuffers;

BOOL WINAPI NoteTheFlush(HANDLE file) {
  writesWhenFlushed.push_back(writes.size());
  return systemFlushFileBuffers(file);
}

bool noLengths = false;  // the system tells none

BOOL WINAPI TellNoLength(LPCWSTR path, GET_FILEEX_INFO_LEVELS level, void* found) {
  if (!noLengths) return ::GetFileAttributesExW(path, level, found);
  ::SetLastError(ERROR_GEN_FAILURE);
  return FALSE;
}

[[maybe_unused]] const bool replacedToo = (ReplaceFunction("GetFileAttributesExW", &TellNoLength), true);

bool allAreReparsePoints = false;  // whatever is opened

LONG WINAPI ShowAReparsePoint(HANDLE file, IO_STATUS_BLOCK* io, void* found, ULONG size, ULONG kind) {
  using Function = LONG(WINAPI*)(HANDLE, IO_STATUS_BLOCK*, void*, ULONG, ULONG);
  constexpr ULONG kBasic = 4;
  static const auto system = std::bit_cast<Function>(TrueFunction("ntdll.dll", "NtQueryInformationFile"));
  const LONG status = system(file, io, found, size, kind);
  if (allAreReparsePoints && kind == kBasic)
    static_cast<FILE_BASIC_INFORMATION*>(found)->FileAttributes |= FILE_ATTRIBUTE_REPARSE_POINT;
  return status;
}

[[maybe_unused]] const bool replacedAsWell = (ReplaceFunction("NtQueryInformationFile", &ShowAReparsePoint), true);

void WINAPI SameTime(SYSTEMTIME* now) { *now = {2004, 5, 3, 12, 13, 14, 15, 160}; }

}  // namespace

TEST_F(FileExistsFsTest, IsTrueForFilesOnly) {
  const std::string file = folder.File("file.txt");
  const std::string hidden = folder.File("hidden.txt");
  ::SetFileAttributesA(hidden.c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_READONLY);
  EXPECT_TRUE(FileExistsFs(PathOf(Widen(file))));
  EXPECT_TRUE(FileExistsFs(PathOf(Widen(hidden))));
  EXPECT_FALSE(FileExistsFs(PathOf(Widen(folder.Path()))));
  EXPECT_FALSE(FileExistsFs(PathOf(Widen(folder.Path() + "\\"))));
  for (const char* path :
       {"C:\\test\\missing.txt", "C:\\", "C:", "", " ", "C:\\test\\scratch\\*.txt", "Q:\\file.txt", "\\\\"})
    EXPECT_FALSE(FileExistsFs(PathOf(Widen(path)))) << '"' << path << '"';
}

TEST_F(FileExistsFsTest, TakesAPathFromTheCurrentFolder) {
  folder.File("file.txt");
  ::SetCurrentDirectoryA(folder.Path().c_str());
  EXPECT_TRUE(FileExistsFs(PathOf(Widen("file.txt"))));
  ::SetCurrentDirectoryA("C:\\test");
  EXPECT_FALSE(FileExistsFs(PathOf(Widen("file.txt"))));
}

TEST_F(WipeFileTest, DeletesAFile) {
  const std::string file = folder.File("file.txt");
  const std::string neighbour = folder.File("file.txt2");
  WipeFile(file, 0);
  EXPECT_FALSE(IsThere(file));
  EXPECT_TRUE(IsThere(neighbour));
  EXPECT_EQ(log.Lines(), LogLines());
}

TEST_F(WipeFileTest, DeletesWithoutOverwritingForNoPasses) {
  for (const std::int16_t passes : std::initializer_list<std::int16_t>{0, -1}) {
    const std::string file = folder.File("file.txt", "the content");
    const std::string second = SecondName(file);
    WipeFile(file, passes);
    EXPECT_FALSE(IsThere(file));
    EXPECT_EQ(ReadWhole(second), "the content");
    ::DeleteFileA(second.c_str());
  }
}

TEST_F(WipeFileTest, OverwritesEveryByteBeforeItDeletes) {
  for (const std::int16_t passes : std::initializer_list<std::int16_t>{1, 2}) {
    for (const std::size_t size : {1u, 1023u, 1024u, 1025u, 2048u, 2500u, 3 * 1024u, 100000u}) {
      const std::string file = folder.File("file.bin", std::string(size, 'x'));
      const std::string second = SecondName(file);
      WipeFile(file, passes);
      EXPECT_FALSE(IsThere(file));
      const std::string bytes = ReadWhole(second);
      EXPECT_EQ(bytes.size(), size);
      EXPECT_TRUE(IsOverwritten(bytes)) << size << " bytes, " << passes << " passes: " << bytes.substr(0, 40);
      ::DeleteFileA(second.c_str());
    }
  }
  EXPECT_EQ(log.Lines(), LogLines());
}

TEST_F(WipeFileTest, MakesItsTwoFillCharactersAfreshForEachPass) {
  writes.clear();
  tick = 0;
  {
    const ImportHook writing(importedWriteFile, &NoteTheWrite);
    const ImportHook ticking(importedGetTickCount, &NextTick);
    const ImportHook telling(importedGetLocalTime, &SameTime);
    WipeFile(folder.File("file.bin", std::string(2048, 'x')), 10);
  }
  ASSERT_EQ(writes.size(), 20u) << "two blocks a pass";
  std::set<std::string> first, second;
  int different = 0;
  for (std::size_t pass = 0; pass < 10; ++pass) {
    const std::string &a = writes[2 * pass], &b = writes[2 * pass + 1];
    EXPECT_TRUE(IsOverwritten(a + b)) << "pass " << pass;
    first.insert(a);
    second.insert(b);
    different += a != b;
  }
  EXPECT_GT(first.size(), 2u) << "of each pass";
  EXPECT_GT(second.size(), 2u) << "of each pass";
  EXPECT_GT(different, 5) << "the first and the second character of a pass";
}

// A clock is slower than two calls of it.
TEST_F(WipeFileTest, MakesBothFillCharactersOfAPassFromOneSeeding) {
  int different = 0;
  for (tick = 1; tick <= 40; ++tick) {
    writes.clear();
    const ImportHook writing(importedWriteFile, &NoteTheWrite);
    const ImportHook ticking(importedGetTickCount, &SameTick);
    const ImportHook telling(importedGetLocalTime, &SameTime);
    WipeFile(folder.File("file.bin", std::string(2048, 'x')), 1);
    ASSERT_EQ(writes.size(), 2u);
    different += writes[0] != writes[1];
  }
  EXPECT_GT(different, 25) << "of forty passes, each within one tick";
}

TEST_F(WipeFileTest, BringsEachPassToTheDiskBeforeTheNextAndBeforeTheDeletion) {
  writes.clear();
  writesWhenFlushed.clear();
  {
    const ImportHook writing(importedWriteFile, &NoteTheWrite);
    const ImportHook flushing(importedFlushFileBuffers, &NoteTheFlush);
    WipeFile(folder.File("file.bin", std::string(2500, 'x')), 2);
  }
  EXPECT_EQ(writesWhenFlushed, (std::vector<std::size_t>{3, 6}));
  EXPECT_FALSE(IsThere(folder / "file.bin"));
}

TEST_F(WipeFileTest, LeavesAFileWhoseLengthTheSystemDoesNotTell) {
  const std::string file = folder.File("kept.txt", "the content");
  noLengths = true;
  WipeFile(file, 1);
  EXPECT_EQ(ReadWhole(file), "the content");
  EXPECT_EQ(log.Lines().size(), 1u) << "with the reason";
  WipeFile(file, 0);  // which needs none
  noLengths = false;
  EXPECT_FALSE(IsThere(file));
}

TEST_F(WipeFileTest, WritesNothingThroughALink) {
  WipeFile("C:\\outside\\link", 1);
  EXPECT_EQ(ReadWhole("C:\\outside\\canary.txt"), "not ours");
  EXPECT_EQ(log.Lines(), (LogLines{{"C:\\outside\\link", "Permission denied"}}));
}

// A deduplicated or an offline file for example: the bytes would not go where the old ones are.
TEST_F(WipeFileTest, LeavesAReparsePointThatIsToBeOverwrittenAndSaysSo) {
  const std::string file = folder.File("kept.txt", "the content");
  const OpenFolder in(PathOf(Widen(folder.Path())));
  ASSERT_TRUE(in);
  allAreReparsePoints = true;
  WipeFile(file, 1);
  WipeListedFile(in, PathOf(Widen(file)), 11, 1);
  EXPECT_EQ(ReadWhole(file), "the content");
  EXPECT_EQ(log.Lines(), (LogLines{{file, "Permission denied"}, {file, "Permission denied"}}));
  WipeListedFile(in, PathOf(Widen(file)), 11, 0);  // which goes as such
  allAreReparsePoints = false;
  EXPECT_FALSE(IsThere(file));
}

TEST_F(WipeFileTest, DeletesAnEmptyFileAfterAPass) {
  const std::string file = folder.File("empty", "");
  WipeFile(file, 1);
  EXPECT_FALSE(IsThere(file));
  EXPECT_EQ(log.Lines(), LogLines());
}

TEST_F(WipeFileTest, SkipsWhatIsNoFile) {
  folder.File("file.txt");
  for (const std::int16_t passes : std::initializer_list<std::int16_t>{0, 1}) {
    WipeFile(folder / "missing.txt", passes);
    WipeFile(folder.Path(), passes);
    WipeFile(folder / "*.*", passes);
    WipeFile("", passes);
  }
  EXPECT_TRUE(IsThere(folder / "file.txt"));
  EXPECT_EQ(log.Lines(), LogLines());
}

TEST_F(WipeFileTest, LeavesAReadOnlyFileAndHandsPathAndReasonToTheLog) {
  const std::string file = ReadOnlyFile();
  WipeFile(file, 0);
  EXPECT_EQ(ReadWhole(file), "the content");
  EXPECT_EQ(log.Lines(), (LogLines{{file, "Permission denied"}}));
}

TEST_F(WipeFileTest, LeavesAReadOnlyFileUnchangedAfterAPassToo) {
  const std::string file = ReadOnlyFile();
  // Runs for an ordinary user only: the superuser is let in, so that there is no failing open to look at.
  if (OpenForWriting(file)) GTEST_SKIP() << "for the superuser Wine opens read-only files for writing";
  WipeFile(file, 1);
  EXPECT_EQ(ReadWhole(file), "the content");
  EXPECT_EQ(log.Lines(), (LogLines{{file, "Permission denied"}}));
}

TEST_F(WipeFileTest, LeavesAFileThatAnotherProgramHoldsOpen) {
  const std::string file = folder.File("kept.txt", "the content");
  const UniqueFile holder(::CreateFileA(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(holder);
  WipeFile(file, 0);
  WipeFile(file, 1);
  EXPECT_EQ(ReadWhole(file), "the content");
  EXPECT_EQ(log.Lines(), (LogLines{{file, "Permission denied"}, {file, "Permission denied"}}));
}

TEST_F(WipeFileTest, TakesAFileThatIsLockedForAMoment) {
  for (const bool ansi : {false, true}) {
    AnsiNamesOnlyForTests = ansi;
    const std::string file = folder.File("file.txt", "the content");
    holderOfAMoment = OpenForWriting(file);
    ASSERT_TRUE(holderOfAMoment);
    slept = 0;
    LockedFiles.BeginRun();
    const ImportHook hook(importedSleep, &LetGoAfterASecondPause);
    WipeFile(file, 0);
    EXPECT_FALSE(IsThere(file)) << (ansi ? "by ANSI names" : "by wide names");
    EXPECT_EQ(slept, 200u);
  }
  AnsiNamesOnlyForTests = false;
  EXPECT_EQ(log.Lines(), LogLines());
}

TEST_F(WipeFileTest, WaitsForLockedFilesAloneAndNoLongerThanTwoSecondsInARun) {
  const ImportHook hook(importedSleep, &NoteThePause);
  slept = 0;
  LockedFiles.BeginRun();
  const std::string readOnly = ReadOnlyFile();
  for (int number = 0; number < 50; ++number) WipeFile(readOnly, 0);
  EXPECT_EQ(slept, 0u);
  const std::string file = folder.File("locked.txt");
  const UniqueFile holder = OpenForWriting(file);
  for (int number = 0; number < 50; ++number) WipeFile(file, 0);
  EXPECT_EQ(slept, 2000u);
  LockedFiles.BeginRun();
}

TEST_F(WipeFileTest, TriesToOpenAFileThatItCannotOpenOnceForAllPasses) {
  const std::string file = folder.File("kept.txt", "the content");
  const UniqueFile holder(::CreateFileA(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(holder);
  for (const bool ansi : {false, true}) {
    AnsiNamesOnlyForTests = ansi;
    const Path native = PathOf(Widen(file));
    opens = 0;
    LockedFiles.BeginRun();
    {
      const ImportHook hook(importedCreateFileA, &CountTheAnsiOpen);
      EXPECT_TRUE(Wipe(OpenFolder(), native, 11, 3)) << "there is a failure to tell of";
    }
    EXPECT_EQ(opens, 3) << "the tries of one opening, " << (ansi ? "by ANSI names" : "by wide names");
  }
  AnsiNamesOnlyForTests = false;
  EXPECT_EQ(ReadWhole(file), "the content");
}

TEST_F(WipeFileTest, HandsTheFullPathToTheLog) {
  ReadOnlyFile();
  ::SetCurrentDirectoryA(folder.Path().c_str());
  WipeFile("kept.txt", 0);
  ::SetCurrentDirectoryA("C:\\test");
  EXPECT_EQ(log.Lines(), (LogLines{{folder / "kept.txt", "Permission denied"}}));
}

TEST_F(WipeFileTest, KeepsTheFileAfterAStopAndSaysNothing) {
  const NothingSaid nothing;
  const std::string file = folder.File("file.txt", "the content");
  StopErase = true;
  WipeFile(file, 0);
  EXPECT_EQ(ReadWhole(file), "the content");
  EXPECT_EQ(log.Lines(), LogLines());
}

TEST_F(WipeFileTest, EndsItsFirstPassAfterAStop) {
  const std::string file = folder.File("file.txt", std::string(2048, 'x'));
  StopErase = true;
  writes.clear();
  {
    const ImportHook hook(importedWriteFile, &NoteTheWrite);
    WipeFile(file, 2);
  }
  EXPECT_EQ(writes.size(), 2u) << "the blocks of one pass";
  EXPECT_TRUE(IsOverwritten(ReadWhole(file)));
  EXPECT_EQ(ReadWhole(file).size(), 2048u);
  EXPECT_EQ(log.Lines(), LogLines());
}

TEST_F(WipeFileTest, ReachesNamesWithBlanksDotsAndLetters) {
  for (const char* name : {"with blank.txt", "two.dots.txt", "no_ending", "\xE4\xF6\xFC.txt", "#&'+,;=@.txt"}) {
    const std::string file = folder.File(name);
    ASSERT_TRUE(IsThere(file)) << name;
    WipeFile(file, 1);
    EXPECT_FALSE(IsThere(file)) << name;
  }
}

class ATalliedFile : public WipeFileTest {
 protected:
  void SetUp() override {
    WipeFileTest::SetUp();
    LockedFiles.BeginRun();
    tally.AddLine();
  }

  std::string Told() const { return Sentence(tally.Sum({0, 1})); }

  Tally tally;
  ListeningScope listening{tally};
};

TEST_F(ATalliedFile, CountsWithItsBytesAndNotAtAllWhenItIsGoneBeforeItsTurn) {
  for (const std::int16_t passes : {std::int16_t{0}, std::int16_t{1}}) {
    WipeListedFile(OpenFolder(), PathOf(Widen(folder.File("one.txt", "12345"))), 5, passes);
    WipeListedFile(OpenFolder(), PathOf(Widen(folder / "gone.txt")), 5, passes);
    WipeFile(folder / "gone.txt", passes);
  }
  EXPECT_EQ(Told(), "2 files, 10 bytes erased");
}

TEST_F(ATalliedFile, StaysWithTheReasonAndOnceHoweverOftenItIsTried) {
  const std::string file = folder.File("held.txt", "12345");
  const UniqueFile holder = OpenForWriting(file);
  for (const std::int16_t passes : {std::int16_t{0}, std::int16_t{1}}) WipeFile(file, passes);
  EXPECT_EQ(Told(), "Nothing erased; 1 stayed");
  WideView texts = tally.Texts({0, 1});
  EXPECT_EQ(TakeText(texts), Widen(file));
  EXPECT_EQ(TakeText(texts), L"in use by another program");
}
