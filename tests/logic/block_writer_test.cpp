#include "shred/block_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
  BlockWriter writer{[this](std::uint32_t offset, std::string_view bytes) { Put(offset, bytes); },
                     [this](const RuntimeError& reason) { failures.push_back(reason.number); }};
};

}  // namespace

TEST_F(BlockWriterTest, WritesTheItemsBackToBackInTheirOrder) {
  for (const char* item : {"one", "2", "", "three"}) writer.Write(item);
  writer.Write(std::string_view("\0\xFF", 2));
  writer.Flush();
  EXPECT_EQ(file, std::string("one2three\0\xFF", 11));
  EXPECT_THAT(failures, IsEmpty());
}

TEST_F(BlockWriterTest, WritesAnItemSoManyTimes) {
  const std::string_view mark("\0\xFF|", 3);
  std::string expected;
  for (const std::size_t times : {1u, 2u, 3u, 0u, 7u, 64u, 100u}) {
    writer.Write(mark, times);
    for (std::size_t i = 0; i < times; ++i) expected += mark;
  }
  writer.Write("", 5);
  writer.Flush();
  EXPECT_EQ(file, expected);
}

TEST_F(BlockWriterTest, TakesOneWriteABlock) {
  writer.Write("12", 100000);
  writer.Flush();
  EXPECT_THAT(puts, ElementsAre(65536u, 65536u, 65536u, 3392u));
  EXPECT_EQ(file.size(), 200000u);
}

TEST_F(BlockWriterTest, SplitsNoItemBetweenTwoBlocks) {
  writer.Write("123", 30000);
  writer.Flush();
  EXPECT_THAT(puts, ElementsAre(65535u, 24465u));
}

TEST_F(BlockWriterTest, WritesNothingWhenNothingIsThere) {
  writer.Flush();
  EXPECT_THAT(puts, IsEmpty());
  writer.Write("item");
  writer.Flush();
  writer.Flush();
  EXPECT_THAT(puts, ElementsAre(4u));
}

TEST_F(BlockWriterTest, GoesOnBehindTheLastBlockAfterAFlush) {
  writer.Write("one");
  writer.Flush();
  writer.Write("two");
  writer.Flush();
  EXPECT_EQ(file, "onetwo");
}

TEST_F(BlockWriterTest, FailsEachItemOfAFailingBlockOnItsOwn) {
  refusal = kBadFileName;
  writer.Write("10", 3);
  EXPECT_THAT(failures, IsEmpty()) << "a failure waits as long as its block";
  writer.Flush();
  EXPECT_THAT(failures, ElementsAre(52, 52, 52));
  EXPECT_THAT(puts, SizeIs(1)) << "a file that is not open is not asked once more";
}

TEST_F(BlockWriterTest, AsksADeviceThatHasGoneOnceABlock) {
  for (const int error : {kDeviceIoError, kDeviceUnavailable, kDiskNotReady, kInvalidCall}) {
    refusal = error;
    puts.clear();
    failures.clear();
    writer.Write("1", 70000);
    writer.Flush();
    EXPECT_THAT(puts, SizeIs(2)) << error;
    EXPECT_THAT(failures, SizeIs(70000)) << error;
    EXPECT_THAT(failures, Each(error));
  }
}

TEST_F(BlockWriterTest, FillsAFullDiskToTheLastItemThatFits) {
  room = 70001;
  writer.Write("10", 40000);
  writer.Flush();
  EXPECT_EQ(file.size(), 70000u);
  EXPECT_THAT(failures, SizeIs(5000));
  EXPECT_THAT(puts, SizeIs(2 + 2232 + 1)) << "two blocks, what fits of the second, and one that does not";
  EXPECT_THAT(failures, Each(61));
}

TEST_F(BlockWriterTest, WritesTheNextItemThatFitsWhereTheFailingOneShouldHaveGone) {
  room = 3;
  for (const char* item : {"12", "3456", "7"}) writer.Write(item);
  writer.Flush();
  EXPECT_EQ(file, "127");
  EXPECT_THAT(failures, ElementsAre(61));
}

TEST_F(BlockWriterTest, WritesUpToAPartThatAnotherProgramLocked) {
  lockedBegin = 6, lockedEnd = 8;
  writer.Write("10", 5);
  writer.Flush();
  EXPECT_EQ(file, "101010");
  EXPECT_THAT(failures, ElementsAre(70, 70));
}

TEST_F(BlockWriterTest, GoesOnWhenTheDiskHasRoomAgain) {
  room = 0;
  writer.Write("1", 65536);
  writer.Write("2");  // the first block fails
  room = 1000000;
  writer.Flush();
  EXPECT_EQ(file, "2");
  EXPECT_THAT(failures, SizeIs(65536));
}

TEST_F(BlockWriterTest, TakesNoErrorFromBeforeForItsOwn) {
  Err.Set({kOverflow, "Overflow"});
  writer.Write("1");
  writer.Flush();
  EXPECT_EQ(file, "1");
  EXPECT_THAT(failures, IsEmpty());
  Err.Clear();
}
