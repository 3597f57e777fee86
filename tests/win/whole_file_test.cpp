#include "platform/whole_file.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "import_hook.h"
#include "nothing_pending.h"
#include "platform/handles.h"
#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "scratch_folder.h"

using namespace platform;

namespace {

std::uint64_t FileLen(const std::string& path) { return platform::FileLen(PathOf(Widen(path))); }
std::string ReadWholeFile(const std::string& path) { return platform::ReadWholeFile(PathOf(Widen(path))); }
void ReplaceWholeFile(const std::string& path, const std::string& bytes) {
  platform::ReplaceWholeFile(PathOf(Widen(path)), bytes);
}

class WholeFile : public NothingPending {
 protected:
  ScratchFolder folder;
};
using FileLenTest = WholeFile;
using ReadWholeFileTest = WholeFile;

// By the functions of the NT family and by those of Windows 9x.
class ReplaceWholeFileTest : public WholeFile, public testing::WithParamInterface<bool> {
 protected:
  void SetUp() override { WholeFile::SetUp(), AnsiNamesOnlyForTests = GetParam(); }
  void TearDown() override { AnsiNamesOnlyForTests = false, WholeFile::TearDown(); }
};
INSTANTIATE_TEST_SUITE_P(WideAndAnsi, ReplaceWholeFileTest, testing::Bool());

using Names = std::vector<std::string>;

UniqueFile Open(const std::string& path, DWORD access, DWORD share, DWORD disposition = OPEN_EXISTING) {
  return UniqueFile(::CreateFileA(path.c_str(), access, share, nullptr, disposition, 0, nullptr));
}

// The number of the error that the statement raises; 0 when it raises none.
template <class Statement>
int Raises(Statement&& statement) {
  try {
    statement();
  } catch (const RuntimeError& error) {
    EXPECT_STREQ(error.description, RuntimeErrorDescription(error.number));
    return error.number;
  }
  return 0;
}

int ReadingRaises(const std::string& path) {
  return Raises([&] { ReadWholeFile(path); });
}
int ReplacingRaises(const std::string& path, const std::string& bytes = "new") {
  return Raises([&] { ReplaceWholeFile(path, bytes); });
}

std::size_t zerosWritten = 0;
const auto systemWriteFile = importedWriteFile;

BOOL WINAPI CountZeros(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD written, LPOVERLAPPED overlapped) {
  if (count > 0 &&
      std::string_view(static_cast<const char*>(bytes), count).find_first_not_of('\0') == std::string_view::npos)
    zerosWritten += count;
  return systemWriteFile(file, bytes, count, written, overlapped);
}

std::string nameDuringWrites;
Names contentsDuringWrites;

BOOL WINAPI LookAtTheName(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD written, LPOVERLAPPED overlapped) {
  contentsDuringWrites.push_back(ReadWhole(nameDuringWrites));
  return systemWriteFile(file, bytes, count, written, overlapped);
}

// Every byte there is, line ends, NUL and the old end-of-file mark among them.
std::string EveryByte() {
  std::string bytes;
  for (int value = 0; value < 256; ++value) bytes += static_cast<char>(value);
  return bytes + "\r\n\n\r\x1A after it";
}

}  // namespace

TEST_F(FileLenTest, IsTheLengthInBytes) {
  for (const std::size_t length : {0u, 1u, 1000u, 0x10001u})
    EXPECT_EQ(FileLen(folder.File("file.bin", std::string(length, 'x'))), length);
}

TEST_F(FileLenTest, CountsBeyondFourGigabytes) {
  const std::string path = folder / "large.bin";
  {
    const UniqueFile file = Open(path, GENERIC_WRITE, 0, CREATE_ALWAYS);
    LONG high = 1;
    ASSERT_EQ(::SetFilePointer(file.get(), 5, &high, FILE_BEGIN), 5u);
    // Runs where the file system knows files with holes; the file takes no room there.
    if (!::SetEndOfFile(file.get())) GTEST_SKIP() << "this disk holds no such file";
  }
  EXPECT_EQ(FileLen(path), 0x100000005u);
}

TEST_F(FileLenTest, TellsItOfAFileThatAnotherProgramHolds) {
  const std::string path = folder.File("file.txt", "content");
  const UniqueFile holder = Open(path, GENERIC_READ | GENERIC_WRITE, 0);
  ASSERT_TRUE(holder);
  EXPECT_EQ(FileLen(path), 7u);
}

TEST_F(FileLenTest, TellsItWhateverTheAttributesAre) {
  const std::string path = folder.File("file.txt", "content");
  ::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  EXPECT_EQ(FileLen(path), 7u);
}

TEST_F(FileLenTest, RaisesFileNotFoundForWhatIsNoFile) {
  folder.File("file.txt");
  EXPECT_EQ(Raises([&] { FileLen(folder / "missing.txt"); }), kFileNotFound);
  EXPECT_EQ(Raises([&] { FileLen(folder.Path()); }), kFileNotFound);
  EXPECT_EQ(Raises([&] { FileLen(folder / "none\\file.txt"); }), kPathNotFound);
  for (const std::string& path : {folder / "*.txt", std::string(), std::string("Q:\\file.txt")})
    EXPECT_NE(Raises([&] { FileLen(path); }), 0) << '"' << path << '"';
}

TEST_F(ReadWholeFileTest, GivesEveryByteAsItStands) {
  EXPECT_EQ(ReadWholeFile(folder.File("file.bin", EveryByte())), EveryByte());
  EXPECT_EQ(ReadWholeFile(folder.File("empty", "")), "");
}

TEST_F(ReadWholeFileTest, ReadsALargeFile) {
  const std::string bytes(3 * 1024 * 1024 + 1, 'x');
  EXPECT_TRUE(ReadWholeFile(folder.File("large.bin", bytes)) == bytes);
}

TEST_F(ReadWholeFileTest, ReadsWhatOthersReadAndWrite) {
  const std::string path = folder.File("file.txt", "content");
  const UniqueFile holder = Open(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE);
  ASSERT_TRUE(holder);
  EXPECT_EQ(ReadWholeFile(path), "content");
}

TEST_F(ReadWholeFileTest, ReadsAReadOnlyAndHiddenFile) {
  const std::string path = folder.File("file.txt", "content");
  ::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
  EXPECT_EQ(ReadWholeFile(path), "content");
}

TEST_F(ReadWholeFileTest, RaisesWhyItCannot) {
  const std::string path = folder.File("file.txt", "content");
  const UniqueFile holder = Open(path, GENERIC_READ, 0);
  EXPECT_EQ(ReadingRaises(path), kPermissionDenied);
  EXPECT_EQ(ReadingRaises(folder / "missing.txt"), kFileNotFound);
  EXPECT_EQ(ReadingRaises(folder / "none\\file.txt"), kPathNotFound);
  EXPECT_EQ(ReadingRaises(folder.Path()), kPermissionDenied);
  EXPECT_NE(ReadingRaises(""), 0);
}

TEST_P(ReplaceWholeFileTest, CreatesTheFile) {
  ReplaceWholeFile(folder / "file.bin", EveryByte());
  EXPECT_EQ(ReadWhole(folder / "file.bin"), EveryByte());
  EXPECT_EQ(NamesIn(folder.Path()), Names{"file.bin"});
}

TEST_P(ReplaceWholeFileTest, ReplacesALongerAndAShorterOne) {
  const std::string path = folder.File("file.txt", std::string(1000, 'x'));
  for (const std::string& bytes : {std::string("short"), std::string(100000, 'y'), std::string()}) {
    ReplaceWholeFile(path, bytes);
    EXPECT_TRUE(ReadWhole(path) == bytes) << bytes.size();
    EXPECT_EQ(NamesIn(folder.Path()), Names{"file.txt"});
  }
}

TEST_P(ReplaceWholeFileTest, TakesAPathFromTheCurrentFolder) {
  ::SetCurrentDirectoryA(folder.Path().c_str());
  ReplaceWholeFile("file.txt", "content");
  EXPECT_EQ(ReadWhole(folder / "file.txt"), "content");
}

TEST_P(ReplaceWholeFileTest, ClosesTheFileAgain) {
  ReplaceWholeFile(folder / "file.txt", "content");
  EXPECT_TRUE(Open(folder / "file.txt", GENERIC_READ | GENERIC_WRITE, 0));
}

TEST_P(ReplaceWholeFileTest, TakesTheFileBesideOfARunThatWasBroken) {
  const std::string path = folder.File("file.txt", "old");
  folder.File("file.txt.tmp", std::string(1000, 'x'));
  ReplaceWholeFile(path, "new");
  EXPECT_EQ(ReadWhole(path), "new");
  EXPECT_EQ(NamesIn(folder.Path()), Names{"file.txt"});
}

// A failure leaves the old file whole and nothing beside it.

TEST_P(ReplaceWholeFileTest, LeavesNothingOfAnOldFileThatStepsAside) {
  const std::string path = folder.File("list", "old");
  if (GetParam()) folder.File("list.old", "of a run that was broken");
  EXPECT_EQ(ReplacingRaises(path), 0);
  EXPECT_EQ(ReadWhole(path), "new");
  EXPECT_EQ(NamesIn(folder.Path()), Names{"list"});
}

TEST_P(ReplaceWholeFileTest, LeavesAReadOnlyFile) {
  const std::string path = folder.File("file.txt", "old");
  ::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(ReplacingRaises(path), kAccessError);
  EXPECT_EQ(ReadWhole(path), "old");
  EXPECT_NE(::GetFileAttributesA(path.c_str()) & FILE_ATTRIBUTE_READONLY, 0u);
  EXPECT_EQ(NamesIn(folder.Path()), Names{"file.txt"});
}

TEST_P(ReplaceWholeFileTest, LeavesAFolderOfThatName) {
  for (const char* inner : {"", "\\file.txt"}) {
    ::CreateDirectoryA((folder / "name").c_str(), nullptr);
    if (*inner != '\0') folder.File(std::string("name") + inner, "old");
    EXPECT_EQ(ReplacingRaises(folder / "name"), kAccessError);
    EXPECT_EQ(NamesIn(folder.Path()), Names{"name"});
  }
  EXPECT_EQ(ReadWhole(folder / "name\\file.txt"), "old");
}

TEST_P(ReplaceWholeFileTest, LeavesTheFileWhenAFolderStandsInTheWayBesideIt) {
  const std::string path = folder.File("file.txt", "old");
  ::CreateDirectoryA((folder / "file.txt.tmp").c_str(), nullptr);
  EXPECT_EQ(ReplacingRaises(path), kPermissionDenied);
  EXPECT_EQ(ReadWhole(path), "old");
  EXPECT_EQ(NamesIn(folder.Path()).size(), 2u);
  EXPECT_EQ(ReplacingRaises(folder / "file.txt.tmp\\none\\file.txt"), kPathNotFound);
}

TEST_P(ReplaceWholeFileTest, LeavesAFileThatAnotherProgramHolds) {
  const std::string path = folder.File("file.txt", "old");
  for (const DWORD share :
       {0ul, static_cast<DWORD>(FILE_SHARE_READ), static_cast<DWORD>(FILE_SHARE_READ | FILE_SHARE_WRITE)}) {
    const UniqueFile holder = Open(path, GENERIC_READ, share);
    ASSERT_TRUE(holder);
    EXPECT_EQ(ReplacingRaises(path), kPermissionDenied) << "shared as " << share;
    EXPECT_EQ(NamesIn(folder.Path()), Names{"file.txt"});
  }
  EXPECT_EQ(ReadWhole(path), "old");
}

TEST_P(ReplaceWholeFileTest, RaisesThatThereIsNoSuchFolder) {
  EXPECT_EQ(ReplacingRaises(folder / "none\\file.txt"), kPathNotFound);
  for (const char* path : {"Q:\\file.txt", ""}) EXPECT_NE(ReplacingRaises(path), 0) << path;
  EXPECT_FALSE(IsThere("C:\\test\\.tmp"));
  EXPECT_EQ(NamesIn(folder.Path()), Names());
}

TEST_P(ReplaceWholeFileTest, LeavesTheFileOnADiskThatIsFull) {
  const char* const disk = std::getenv("QUELLIX_TEST_SMALL_DISK");
  // Runs where the preparation may mount a disk of its own.
  if (disk == nullptr) GTEST_SKIP() << "this user may mount no small disk";
  const ScratchFolder small(std::string(disk) + "scratch");
  const std::string path = small.File("file.txt", std::string(20000, 'x'));
  for (const std::size_t tooMany : {60000u, 200000u}) {
    EXPECT_EQ(ReplacingRaises(path, std::string(tooMany, 'y')), kDiskFull);
    EXPECT_TRUE(ReadWhole(path) == std::string(20000, 'x'));
    EXPECT_EQ(NamesIn(small.Path()), Names{"file.txt"});
  }
  ReplaceWholeFile(path, std::string(30000, 'y'));
  EXPECT_TRUE(ReadWhole(path) == std::string(30000, 'y'));
}

// What a save that is broken off at each of its moments leaves, and the next start makes of it.

struct BrokenSave {
  const char* moment;
  Names there;  // each file holds its own ending
  const char* content;
};

TEST_P(ReplaceWholeFileTest, IsMendedAfterACrashAtAnyMoment) {
  const std::vector<BrokenSave> inSteps = {
      {"while the new one is written", {"list", "list.tmp"}, ""},
      {"when the old one has stepped aside", {"list.old", "list.tmp"}, ".old"},
      {"when the new one has its name", {"list", "list.old"}, ""},
      {"when the first save is written", {"list.tmp"}, nullptr},
      {"never", {"list"}, ""},
  };
  const std::vector<BrokenSave> inOneStep = {
      {"while the new one is written", {"list", "list.tmp"}, ""},
      {"when the old one has a second name", {"list", "list.old.tmp", "list.tmp"}, ""},
      {"when the new one has its name", {"list", "list.old.tmp"}, ""},
      {"when the first save is written", {"list.tmp"}, nullptr},
      {"and the list was deleted by hand", {"list.old.tmp"}, nullptr},
  };
  for (const BrokenSave& row : GetParam() ? inSteps : inOneStep) {
    for (const std::string& name : row.there) folder.File(name, name.substr(4));
    MendWholeFile(PathOf(Widen(folder / "list")));
    EXPECT_EQ(NamesIn(folder.Path()), row.content != nullptr ? Names{"list"} : Names()) << row.moment;
    EXPECT_EQ(ReadWhole(folder / "list"), row.content != nullptr ? row.content : "") << row.moment;
    ::DeleteFileA((folder / "list").c_str());
  }
}

// The name means a whole file at every moment: where it is replaced, and where the old one is wiped afterwards.
TEST_F(WholeFile, IsReplacedInOneStepOnTheNtFamily) {
  const std::string path = folder.File("list", "old");
  nameDuringWrites = path;
  contentsDuringWrites.clear();
  const ImportHook hook(importedWriteFile, &LookAtTheName);
  ReplaceWholeFile(path, "new");
  EXPECT_EQ(contentsDuringWrites, (Names{"old", "new"}));
}

TEST_F(WholeFile, LeavesAnOldFileOfTheUsersOnTheNtFamily) {
  const std::string path = folder.File("list", "old"), backup = folder.File("list.old", "a backup");
  ReplaceWholeFile(path, "new");
  MendWholeFile(PathOf(Widen(path)));
  EXPECT_EQ(ReadWhole(backup), "a backup");
}

TEST_P(ReplaceWholeFileTest, OverwritesTheOldFileBeforeItGoes) {
  const std::string path = folder.File("list", std::string(100000, 'x'));
  zerosWritten = 0;
  const ImportHook hook(importedWriteFile, &CountZeros);
  ReplaceWholeFile(path, "new");
  EXPECT_EQ(zerosWritten, 100000u);
  zerosWritten = 0;
  WipeWholeFile(PathOf(Widen(path)));
  EXPECT_EQ(zerosWritten, 3u);
  EXPECT_EQ(NamesIn(folder.Path()), Names());
}

TEST_P(ReplaceWholeFileTest, WritesIntoNoFileThatHasASecondName) {
  const ScratchFolder outside("C:\\outside");
  const std::string canary = outside.File("canary.txt", "not ours");
  for (const char* name : {"list", "list.tmp", "list.old", "list.old.tmp"}) {
    if (!GetParam() && std::string(name) == "list.old") continue;  // is nobody's but the user's there
    if (GetParam() && std::string(name) == "list.old.tmp") continue;
    ASSERT_TRUE(::CreateHardLinkA((folder / name).c_str(), canary.c_str(), nullptr));
    ReplaceWholeFile(folder / "list", "new");
    EXPECT_EQ(ReadWhole(canary), "not ours") << name;
    ::DeleteFileA((folder / name).c_str());
    ASSERT_TRUE(::CreateHardLinkA((folder / name).c_str(), canary.c_str(), nullptr));
    WipeWholeFile(PathOf(Widen(folder / name)));
    EXPECT_EQ(ReadWhole(canary), "not ours") << name;
    EXPECT_FALSE(IsThere(folder / name));
    MendWholeFile(PathOf(Widen(folder / "list")));
    EXPECT_EQ(ReadWhole(canary), "not ours") << name;
  }
}

TEST_F(ReadWholeFileTest, RefusesAFileOfMoreThan16Megabytes) {
  const std::string path = folder / "large";
  const auto makeOf = [&path](LONG size) {
    const UniqueFile file = Open(path, GENERIC_WRITE, 0, CREATE_ALWAYS);
    ::SetFilePointer(file.get(), size, nullptr, FILE_BEGIN);
    ::SetEndOfFile(file.get());
  };
  makeOf(16 * 1024 * 1024);
  EXPECT_EQ(ReadWholeFile(path).size(), 16u * 1024 * 1024);
  EXPECT_FALSE(IsTooLarge(PathOf(Widen(path))));
  makeOf(16 * 1024 * 1024 + 1);
  EXPECT_EQ(ReadingRaises(path), kOutOfMemory);
  EXPECT_TRUE(IsTooLarge(PathOf(Widen(path))));
  EXPECT_FALSE(IsTooLarge(PathOf(Widen(folder / "missing"))));
}
