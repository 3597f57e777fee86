#include "shred/block_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "platform/runtime_error.h"

using namespace platform;
using namespace shred;

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// A file on a disk that fails as a test wants it to, and what was asked of it.
class BlockWriterTest : public testing::Test {
 protected:
  void SetUp() override { Err.Clear(); }
  void TearDown() override { EXPECT_EQ(Err.Number(), 0) << "an error is left pending: " << Err.Description(); }

  void Put(std::uint32_t offset, std::string_view bytes) {
    puts.push_back(bytes.size());
    if (refusal != 0) Raise(refusal);
    if (offset + bytes.size() > room) Raise(kDiskFull);
    if (offset < lockedEnd && offset + bytes.size() > lockedBegin) Raise(kPermissionDenied);
    file.resize(std::max(file.size(), offset + bytes.size()), '?');
    file.replace(offset, bytes.size(), bytes);
  }

  std::string file;
  std::size_t room = 1000000;
  std::size_t lockedBegin = 0, lockedEnd = 0;
  int refusal = 0;
  std::vector<std::size_t> puts;  // their sizes
  std::vector<int> failures;
  void Write(std::string_view item, std::size_t times = 1) { items.push_back({item, times}); }
  void Flush() {
    for (const Block& block : InBlocks(std::exchange(items, {}))) writer.Write(block);
  }

  std::vector<ItemRun> items;
  BlockWriter writer{[this](std::uint32_t offset, std::string_view bytes) { Put(offset, bytes); },
                     [this](const RuntimeError& reason) { failures.push_back(reason.number); }};
};

}  // namespace

TEST_F(BlockWriterTest, WritesTheItemsBackToBackInTheirOrder) {
  for (const char* item : {"one", "2", "", "three"}) Write(item);
  Write(std::string_view("\0\xFF", 2));
  Flush();
  EXPECT_EQ(file, std::string("one2three\0\xFF", 11));
  EXPECT_THAT(failures, IsEmpty());
}

TEST_F(BlockWriterTest, WritesAnItemSoManyTimes) {
  const std::string_view mark("\0\xFF|", 3);
  std::string expected;
  for (const std::size_t times : {1u, 2u, 3u, 0u, 7u, 64u, 100u}) {
    Write(mark, times);
    for (std::size_t i = 0; i < times; ++i) expected += mark;
  }
  Write("", 5);
  Flush();
  EXPECT_EQ(file, expected);
}

TEST_F(BlockWriterTest, TakesOneWriteABlock) {
  Write("12", 100000);
  Flush();
  EXPECT_THAT(puts, ElementsAre(65536u, 65536u, 65536u, 3392u));
  EXPECT_EQ(file.size(), 200000u);
}

TEST_F(BlockWriterTest, SplitsNoItemBetweenTwoBlocks) {
  Write("123", 30000);
  Flush();
  EXPECT_THAT(puts, ElementsAre(65535u, 24465u));
}

TEST_F(BlockWriterTest, WritesNothingWhenNothingIsThere) {
  Flush();
  EXPECT_THAT(puts, IsEmpty());
  Write("item");
  Flush();
  Flush();
  EXPECT_THAT(puts, ElementsAre(4u));
}

TEST_F(BlockWriterTest, GoesOnBehindTheLastBlockAfterAFlush) {
  Write("one");
  Flush();
  Write("two");
  Flush();
  EXPECT_EQ(file, "onetwo");
}

TEST_F(BlockWriterTest, FailsEachItemOfAFailingBlockOnItsOwn) {
  refusal = kBadFileName;
  Write("10", 3);
  Flush();
  EXPECT_THAT(failures, ElementsAre(52, 52, 52));
  EXPECT_THAT(puts, SizeIs(1)) << "a file that is not open is not asked once more";
}

TEST_F(BlockWriterTest, AsksADeviceThatHasGoneOnceABlock) {
  for (const int error : {kDeviceIoError, kDeviceUnavailable, kDiskNotReady, kInvalidCall}) {
    refusal = error;
    puts.clear();
    failures.clear();
    Write("1", 70000);
    Flush();
    EXPECT_THAT(puts, SizeIs(2)) << error;
    EXPECT_THAT(failures, SizeIs(70000)) << error;
    EXPECT_THAT(failures, Each(error));
  }
}

TEST_F(BlockWriterTest, FillsAFullDiskToTheLastItemThatFits) {
  room = 70001;
  Write("10", 40000);
  Flush();
  EXPECT_EQ(file.size(), 70000u);
  EXPECT_THAT(failures, SizeIs(5000));
  EXPECT_THAT(puts, SizeIs(2 + 2232 + 1)) << "two blocks, what fits of the second, and one that does not";
  EXPECT_THAT(failures, Each(61));
}

TEST_F(BlockWriterTest, WritesTheNextItemThatFitsWhereTheFailingOneShouldHaveGone) {
  room = 3;
  for (const char* item : {"12", "3456", "7"}) Write(item);
  Flush();
  EXPECT_EQ(file, "127");
  EXPECT_THAT(failures, ElementsAre(61));
}

TEST_F(BlockWriterTest, WritesUpToAPartThatAnotherProgramLocked) {
  lockedBegin = 6, lockedEnd = 8;
  Write("10", 5);
  Flush();
  EXPECT_EQ(file, "101010");
  EXPECT_THAT(failures, ElementsAre(70, 70));
}

TEST_F(BlockWriterTest, GoesOnWhenTheDiskHasRoomAgain) {
  const std::vector<Block> blocks = InBlocks({{"1", 65536}, {"2", 1}});
  ASSERT_THAT(blocks, SizeIs(2));
  room = 0;
  writer.Write(blocks[0]);
  room = 1000000;
  writer.Write(blocks[1]);
  EXPECT_EQ(file, "2");
  EXPECT_THAT(failures, SizeIs(65536));
}

TEST_F(BlockWriterTest, TakesTheSameBlocksForAnotherFile) {
  const std::vector<Block> blocks = InBlocks({{"one", 2}, {"2", 1}});
  for (int number = 0; number < 2; ++number) {
    std::string other;
    BlockWriter next([&](std::uint32_t offset, std::string_view bytes) { other.insert(offset, bytes); },
                     [this](const RuntimeError& reason) { failures.push_back(reason.number); });
    for (const Block& block : blocks) next.Write(block);
    EXPECT_EQ(other, "oneone2");
  }
}

TEST_F(BlockWriterTest, TakesNoErrorFromBeforeForItsOwn) {
  Err.Set({kOverflow, "Overflow"});
  Write("1");
  Flush();
  EXPECT_EQ(file, "1");
  EXPECT_THAT(failures, IsEmpty());
  Err.Clear();
}
