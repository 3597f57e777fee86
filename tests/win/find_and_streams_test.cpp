// The cleaners that delete registry keys: the histories of the Find window and the streams of Explorer.
#include <gtest/gtest.h>

#include "cleaners/modCleaning.h"
#include "cleaners/wipe_state.h"
#include "connection.h"
#include "locked_key.h"
#include "log_recorder.h"
#include "nothing_pending.h"
#include "platform/Reg32.h"
#include "platform/runtime_error.h"
#include "platform/stop_request.h"
#include "scratch_key.h"
#include "stop_at_change.h"

using namespace cleaners;
using namespace platform;

namespace {

constexpr char kStreams[] = "Software\\Microsoft\\Windows\\CurrentVersion\\StreamMRU";
constexpr char kMemory[] = "SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Memory Management";

class ClearFindTest : public NothingPending {
 protected:
  static void SetUpTestSuite() { GoOffline(); }
  // 30 values, one of them the key's own.
  static void Fill(const ScratchKey& key, int count = 30) {
    key.PutText("", "own");
    for (int value = 1; value < count; ++value) key.PutText("value " + std::to_string(value), "*.doc");
  }

  ScratchKey files{"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Doc Find Spec MRU"};
  ScratchKey bar{
      "Software\\Microsoft\\Internet Explorer\\Explorer Bars\\{C4EE31F3-4768-11D2-BE5C-00A0C9A83DA1}\\FilesNamedMRU"};
  LogRecorder log;
};

class ClearRegistryStreamsTest : public ClearFindTest {
 protected:
  ScratchKey streams{kStreams};
  ScratchKey memory{kMemory};
};

// A key that holds a subkey that nobody may read cannot be deleted, and shows what the value loop does by itself.
class Lasting : public LockedKey {
 public:
  explicit Lasting(const ScratchKey& key) : LockedKey(key.Path() + "\\kept", READ_CONTROL) {}
};

const LogLines kCleared = {{"Find File List Cleared", "(stamp)"}};
const LogLines kAborted = {{"Find File List", "**Aborted**"}};

}  // namespace

TEST_F(ClearFindTest, DeletesBothKeysWithTheirValues) {
  Fill(files);
  Fill(bar);
  ASSERT_EQ(files.ValueCount(), 30u);
  ClearFind();
  EXPECT_FALSE(files.Exists());
  EXPECT_FALSE(bar.Exists());
  EXPECT_EQ(log.Stamped(), kCleared);
}

TEST_F(ClearFindTest, DeletesEveryValueBeforeItDeletesTheKey) {
  Fill(files);
  Fill(bar);
  const Lasting lastingFiles(files);
  const Lasting lastingBar(bar);
  ClearFind();
  ASSERT_TRUE(files.Exists());
  ASSERT_TRUE(bar.Exists());
  EXPECT_EQ(files.ValueCount(), 0u);
  EXPECT_EQ(bar.ValueCount(), 0u);
  EXPECT_EQ(log.Stamped(), kCleared);
}

TEST_F(ClearFindTest, DeletesTheSubkeysToo) {
  for (const ScratchKey* key : {&files, &bar}) {
    key->PutText("name", "text", "one\\two\\three");
    key->PutText("name", "text", "other");
  }
  ClearFind();
  EXPECT_FALSE(files.Exists());
  EXPECT_FALSE(bar.Exists());
}

TEST_F(ClearFindTest, DeletesTheLongestNamesThatItsBufferHolds) {
  for (char letter = 'a'; letter <= 'z'; ++letter) files.PutText(std::string(254, letter), "text");
  const Lasting lasting(files);
  ClearFind();
  EXPECT_EQ(files.ValueCount(), 0u);
}

TEST_F(ClearFindTest, DeletesTheKeyAlsoWhenAValueCannotBeReadOrNamed) {
  files.PutText(std::string(255, 'a'), "longer than the buffer");
  Fill(files);
  Fill(bar);
  const UniqueKey key = bar.Open("", KEY_SET_VALUE);
  ::RegSetValueExW(key.get(), L"\u4e2d\u6587", 0, REG_BINARY, nullptr, 0);  // no name of the ANSI code page
  ClearFind();
  EXPECT_FALSE(files.Exists());
  EXPECT_FALSE(bar.Exists());
  EXPECT_EQ(log.Stamped(), kCleared);
}

TEST_F(ClearFindTest, CountsBothKeysAlsoWhenTheyAreMissing) {
  const std::int32_t before = CleanedKeyCount;
  ClearFind();
  EXPECT_EQ(CleanedKeyCount, before + 2);
  EXPECT_EQ(log.Stamped(), kCleared);
  Fill(bar);
  ClearFind();
  EXPECT_EQ(CleanedKeyCount, before + 4);
  EXPECT_FALSE(bar.Exists()) << "whether the other key is there or not";
}

TEST_F(ClearFindTest, RunsAgainWhileTheKeyOfTheRunBeforeIsOpen) {
  for (int run = 0; run < 3; ++run) {
    Fill(files);
    Fill(bar);
    ClearFind();
    EXPECT_FALSE(files.Exists()) << "run " << run;
    EXPECT_FALSE(bar.Exists()) << "run " << run;
  }
}

TEST_F(ClearFindTest, LeavesTheNeighboursAlone) {
  ScratchKey neighbour("Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Doc Find Spec MRU 2");
  neighbour.PutText("name", "text");
  Fill(files);
  ClearFind();
  EXPECT_EQ(neighbour.Text("name"), "text");
}

TEST_F(ClearFindTest, DeletesTheKeysWithoutTheirValueLoopsAfterAStop) {
  Fill(files);
  Fill(bar);
  StopErase = true;
  {
    const Lasting lastingFiles(files);
    const Lasting lastingBar(bar);
    ClearFind();
  }
  EXPECT_EQ(files.ValueCount(), 30u);
  EXPECT_EQ(bar.ValueCount(), 30u);
  ClearFind();
  EXPECT_FALSE(files.Exists());
  EXPECT_FALSE(bar.Exists());
  LogLines twice = kAborted;
  twice.push_back(kAborted[0]);
  EXPECT_EQ(log.Stamped(), twice);
}

// The stop comes from another thread as soon as a value is gone. On a busy machine that may be too late, so it is tried
// until values are left.
TEST_F(ClearFindTest, LeavesTheValueLoopWhenTheStopArrivesInIt) {
  const Lasting lastingFiles(files);
  const Lasting lastingBar(bar);
  for (int attempt = 0; attempt < 20 && files.ValueCount() == 0; ++attempt) {
    Fill(files, 2000);
    Fill(bar);
    StopErase = false;
    const StopAtTheFirstChange stop(files.Open("", KEY_NOTIFY));
    ClearFind();
  }
  EXPECT_GT(files.ValueCount(), 0u);
  EXPECT_LT(files.ValueCount(), 2000u);
  EXPECT_EQ(bar.ValueCount(), 30u) << "the second key is then without its value loop";
  EXPECT_EQ(log.Stamped().back(), kAborted[0]);
}

TEST_F(ClearRegistryStreamsTest, DeletesTheStreamsWithTheirSubkeys) {
  streams.PutText("MRUList", "ab");
  streams.PutText("name", "text", "one\\two");
  ScratchKey neighbour("Software\\Microsoft\\Windows\\CurrentVersion\\StreamMRU2");
  neighbour.PutText("name", "text");
  ClearRegistryStreams();
  EXPECT_FALSE(streams.Exists());
  EXPECT_EQ(neighbour.Text("name"), "text");
  EXPECT_EQ(log.Stamped(), (LogLines{{"Registry Streams Cleared", "(stamp)"}}));
}

TEST_F(ClearRegistryStreamsTest, WritesThePageFileValueOfTheCurrentUserAsAText) {
  ASSERT_FALSE(streams.Exists()) << "a missing key does not hinder it";
  ClearRegistryStreams();
  EXPECT_EQ(memory.Text("ClearPageFileAtShutdown"), "0");
}

TEST_F(ClearRegistryStreamsTest, LeavesTheMachinesPageFileValueAlone) {
  ClearRegistryStreams();
  HKEY opened = nullptr;
  ::RegOpenKeyExA(HKEY_LOCAL_MACHINE, kMemory, 0, KEY_QUERY_VALUE, &opened);
  const UniqueKey machine(opened);
  ASSERT_TRUE(machine);
  EXPECT_EQ(::RegQueryValueExA(machine.get(), "ClearPageFileAtShutdown", nullptr, nullptr, nullptr, nullptr),
            ERROR_FILE_NOT_FOUND);
}
