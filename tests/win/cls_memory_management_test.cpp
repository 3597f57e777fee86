#include "platform/clsMemoryManagement.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

#include "platform/late_binding.h"

using namespace platform;

namespace {

constexpr std::size_t kPage = 4096;
constexpr std::size_t kTooMuch = 0x7FFF0000;  // of 2 GB of addresses, some of which the program itself takes

MEMORY_BASIC_INFORMATION Query(const void* address) {
  MEMORY_BASIC_INFORMATION information{};
  ::VirtualQuery(address, &information, sizeof information);
  return information;
}

bool IsFree(const void* address) { return Query(address).State == MEM_FREE; }

// Reserved pages of which the first ones are committed.
class Pages {
 public:
  explicit Pages(std::size_t committed, std::size_t reserved = 8)
      : start_(static_cast<char*>(::VirtualAlloc(nullptr, reserved * kPage, MEM_RESERVE, PAGE_READWRITE))) {
    ::VirtualAlloc(start_, committed * kPage, MEM_COMMIT, PAGE_READWRITE);
  }
  Pages(const Pages&) = delete;
  Pages& operator=(const Pages&) = delete;
  ~Pages() { ::VirtualFree(start_, 0, MEM_RELEASE); }

  char* Start() const { return start_; }
  char* Page(std::size_t index) const { return start_ + index * kPage; }
  void Protect(DWORD protection) const { Protect(start_, protection); }
  static void Protect(void* page, DWORD protection) {
    DWORD before;
    EXPECT_TRUE(::VirtualProtect(page, kPage, protection, &before));
  }

 private:
  char* start_;
};

// Where nothing is, nor will be before the next allocation.
char* FreedAddress() { return Pages(1).Start(); }

class Block : public testing::Test {
 protected:
  // A block of the text's length that holds the text.
  void Hold(const std::string& text) {
    block.Allocate(text.size());
    ASSERT_NE(block.Handle(), nullptr);
    std::memcpy(block.Handle(), text.data(), text.size());
  }

  char* Bytes() const { return static_cast<char*>(block.Handle()); }
  std::string Held(std::size_t length) const { return std::string(Bytes(), length); }

  clsMemoryManagement block;
};
using AllocateTest = Block;
using ReleaseMemoryTest = Block;
using ReadFromTest = Block;
using WriteToTest = Block;
using ExtractStringTest = Block;

static_assert(!std::is_copy_constructible_v<clsMemoryManagement> && !std::is_copy_assignable_v<clsMemoryManagement>,
              "two owners would release one block twice");

struct WorkingSetEntry {
  const void* address;
  ULONG_PTR flags;  // bit 0: the page is in memory
};
const LateFunction<BOOL(WINAPI*)(HANDLE, void*, DWORD)> QueryWorkingSet{"psapi.dll", "QueryWorkingSetEx"};

bool IsInMemory(const void* address) {
  WorkingSetEntry entry{address, 0};
  EXPECT_TRUE(QueryWorkingSet(::GetCurrentProcess(), &entry, sizeof entry));
  return (entry.flags & 1) != 0;
}

}  // namespace

TEST_F(AllocateTest, ComesAfterAStateWithoutABlock) { EXPECT_EQ(block.Handle(), nullptr); }

TEST_F(AllocateTest, TakesWholeCommittedPagesThatCanBeReadWrittenAndRun) {
  for (const std::size_t size : {1u, 80u, 4095u, 4096u, 4097u, 65536u, 1000000u}) {
    block.Allocate(size);
    const MEMORY_BASIC_INFORMATION found = Query(block.Handle());
    EXPECT_EQ(found.BaseAddress, block.Handle()) << size;
    EXPECT_EQ(found.AllocationBase, block.Handle()) << size;
    EXPECT_EQ(found.AllocationProtect, DWORD{PAGE_EXECUTE_READWRITE}) << size;
    EXPECT_EQ(found.Protect, DWORD{PAGE_EXECUTE_READWRITE}) << size;
    EXPECT_EQ(found.State, DWORD{MEM_COMMIT}) << size;
    EXPECT_EQ(found.Type, DWORD{MEM_PRIVATE}) << size;
    EXPECT_EQ(found.RegionSize, (size + kPage - 1) / kPage * kPage) << size;
  }
}

TEST_F(AllocateTest, GivesABlockOfZerosAlsoWhereAnOlderBlockWas) {
  for (int time = 0; time < 3; ++time) {
    block.Allocate(3 * kPage);
    ASSERT_EQ(Held(3 * kPage), std::string(3 * kPage, '\0')) << "time " << time;
    std::memset(block.Handle(), 'x', 3 * kPage);
  }
}

TEST_F(AllocateTest, LocksThePagesInMemoryBeforeTheyAreTouched) {
  // Runs on the NT family from Windows Server 2003 on, and so here; older systems have no way to ask.
  if (!QueryWorkingSet) GTEST_SKIP() << "this system does not tell which pages are in memory";
  const Pages unlocked(2);
  block.Allocate(2 * kPage);
  EXPECT_FALSE(IsInMemory(unlocked.Page(1))) << "a page that nobody touched";
  EXPECT_TRUE(IsInMemory(Bytes()));
  EXPECT_TRUE(IsInMemory(Bytes() + kPage));
}

TEST_F(AllocateTest, ReleasesTheFirstBlockWhenItIsCalledTwice) {
  block.Allocate(100);
  const void* const first = block.Handle();
  block.Allocate(1000000);
  ASSERT_NE(block.Handle(), nullptr);
  // The second block may take the first one's place.
  EXPECT_TRUE(IsFree(first) || Query(first).AllocationBase == block.Handle());
  EXPECT_EQ(Query(block.Handle()).RegionSize, 245 * kPage);
}

TEST_F(AllocateTest, ReleasesTheFirstBlockBeforeItAsksForTheSecond) {
  block.Allocate(100);
  const void* const first = block.Handle();
  block.Allocate(kTooMuch);
  EXPECT_EQ(block.Handle(), nullptr);
  EXPECT_TRUE(IsFree(first));
}

TEST_F(AllocateTest, CanBeRepeatedBeyondWhatAllAddressesHold) {
  for (int time = 0; time < 2200; ++time) {
    block.Allocate(1 << 20);
    ASSERT_NE(block.Handle(), nullptr) << "time " << time;
  }
}

TEST_F(AllocateTest, HoldsNoBlockForSize0AndReleasesTheOneBefore) {
  block.Allocate(0);
  EXPECT_EQ(block.Handle(), nullptr);
  block.Allocate(100);
  const void* const first = block.Handle();
  block.Allocate(0);
  EXPECT_EQ(block.Handle(), nullptr);
  EXPECT_TRUE(IsFree(first));
}

TEST_F(AllocateTest, HoldsNoBlockForASizeThatTheSystemDoesNotHave) {
  char bytes[] = "unchanged";
  for (const std::size_t size : {kTooMuch, std::size_t{0x80000000}, std::size_t{0xFFFFFFFF}}) {
    block.Allocate(size);
    EXPECT_EQ(block.Handle(), nullptr) << size;
    block.ReadFrom(bytes, 4);
    block.WriteTo(bytes, 4);
    EXPECT_STREQ(bytes, "unchanged") << size;
    block.ReleaseMemory();
  }
}

TEST_F(AllocateTest, TakesABlockAgainAfterAFailure) {
  block.Allocate(kTooMuch);
  Hold("text");
  EXPECT_EQ(Held(4), "text");
}

TEST_F(ReleaseMemoryTest, GivesTheBlockBackWhole) {
  block.Allocate(3 * kPage);
  const char* const first = Bytes();
  block.ReleaseMemory();
  EXPECT_EQ(block.Handle(), nullptr);
  for (std::size_t page = 0; page < 3; ++page) EXPECT_TRUE(IsFree(first + page * kPage)) << "page " << page;
}

TEST_F(ReleaseMemoryTest, DoesNothingWithoutABlock) {
  constexpr DWORD kOfAnEarlierCall = 12345;
  ::SetLastError(kOfAnEarlierCall);
  block.ReleaseMemory();
  EXPECT_EQ(::GetLastError(), kOfAnEarlierCall) << "the system was asked for something";
  EXPECT_EQ(block.Handle(), nullptr);
  block.Allocate(100);
  block.ReleaseMemory();
  // What is in the place of the block that was held is somebody else's.
  const Pages other(1);
  block.ReleaseMemory();
  EXPECT_EQ(block.Handle(), nullptr);
  EXPECT_FALSE(IsFree(other.Start()));
}

TEST_F(ReleaseMemoryTest, LeavesAnObjectThatCanTakeABlockAgain) {
  block.Allocate(100);
  block.ReleaseMemory();
  Hold("text");
  EXPECT_EQ(Held(4), "text");
}

TEST_F(ReleaseMemoryTest, LeavesTheBlocksOfOtherObjectsAlone) {
  clsMemoryManagement other;
  other.Allocate(100);
  block.Allocate(100);
  EXPECT_NE(block.Handle(), other.Handle());
  block.ReleaseMemory();
  EXPECT_EQ(Query(other.Handle()).State, DWORD{MEM_COMMIT});
}

TEST(DestructionTest, ReleasesTheBlock) {
  const void* address;
  {
    clsMemoryManagement block;
    block.Allocate(100);
    address = block.Handle();
    ASSERT_FALSE(IsFree(address));
  }
  EXPECT_TRUE(IsFree(address));
}

TEST(DestructionTest, DoesNothingWithoutABlock) {
  { const clsMemoryManagement never; }
  clsMemoryManagement failed;
  failed.Allocate(kTooMuch);
}

TEST_F(ReadFromTest, CopiesTheStartOfTheBlockAndNoMore) {
  Hold("0123456789");
  char bytes[] = "unchanged";
  block.ReadFrom(bytes, 4);
  EXPECT_STREQ(bytes, "0123anged");
  EXPECT_EQ(Held(10), "0123456789");
}

TEST_F(ReadFromTest, CopiesZerosLikeOtherBytes) {
  Hold(std::string("a\0b\0", 4));
  char bytes[] = "xxxxx";
  block.ReadFrom(bytes, 4);
  EXPECT_EQ(std::string(bytes, 5), std::string("a\0b\0x", 5));
}

TEST_F(ReadFromTest, DoesNothingWithoutABlock) {
  char bytes[] = "unchanged";
  block.ReadFrom(bytes, 4);
  EXPECT_STREQ(bytes, "unchanged");
  block.Allocate(100);
  block.ReleaseMemory();
  block.ReadFrom(bytes, 4);
  EXPECT_STREQ(bytes, "unchanged");
}

TEST_F(ReadFromTest, CopiesNothingForLength0WhateverTheDestination) {
  Hold("0123456789");
  char bytes[] = "unchanged";
  block.ReadFrom(bytes, 0);
  block.ReadFrom(nullptr, 0);
  block.ReadFrom(FreedAddress(), 0);
  EXPECT_STREQ(bytes, "unchanged");
}

TEST_F(ReadFromTest, DoesNothingForADestinationThatIsNoMemory) {
  Hold("0123456789");
  for (char* bad :
       {static_cast<char*>(nullptr), reinterpret_cast<char*>(1), FreedAddress(), reinterpret_cast<char*>(0xFFFFFFF0)})
    block.ReadFrom(bad, 10);
  block.ReadFrom(reinterpret_cast<char*>(0xFFFFFFF0), 0x20);  // around the end of all addresses
  EXPECT_EQ(Held(10), "0123456789");
}

TEST_F(ReadFromTest, DoesNothingForADestinationThatCannotBeWritten) {
  Hold("0123456789");
  const Pages destination(1);
  std::strcpy(destination.Start(), "unchanged");
  for (const DWORD protection : {PAGE_READONLY, PAGE_EXECUTE_READ, PAGE_NOACCESS}) {
    destination.Protect(protection);
    block.ReadFrom(destination.Start(), 10);
    destination.Protect(PAGE_READWRITE);
    EXPECT_STREQ(destination.Start(), "unchanged") << protection;
  }
}

TEST_F(ReadFromTest, CopiesNothingAtAllWhenOnlyTheEndOfTheDestinationCannotBeWritten) {
  Hold(std::string(100, 'x'));
  const Pages destination(1);
  char* const start = destination.Page(1) - 50;
  block.ReadFrom(start, 51);
  EXPECT_EQ(std::string(start, 50), std::string(50, '\0'));
  block.ReadFrom(start, 50);
  EXPECT_EQ(std::string(start, 50), std::string(50, 'x')) << "up to the last byte";
}

// The system tells readable from unreadable by whole pages.
TEST_F(ReadFromTest, ReachesToTheEndOfTheBlocksLastPageAndCopiesNothingBeyond) {
  Hold("0123456789");
  ASSERT_TRUE(IsFree(Bytes() + kPage));
  std::string bytes(2 * kPage, 'x');
  block.ReadFrom(bytes.data(), kPage + 1);
  EXPECT_EQ(bytes, std::string(2 * kPage, 'x'));
  block.ReadFrom(bytes.data(), kPage);
  EXPECT_EQ(bytes, "0123456789" + std::string(kPage - 10, '\0') + std::string(kPage, 'x'));
}

TEST_F(ReadFromTest, DoesNothingForALengthOfNearlyAllAddresses) {
  Hold("0123456789");
  char bytes[] = "unchanged";
  for (const std::size_t length : {0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) block.ReadFrom(bytes, length);
  EXPECT_STREQ(bytes, "unchanged");
}

TEST_F(ReadFromTest, DoesNothingWhenTheBlockCannotBeRead) {
  Hold(std::string(2 * kPage, 'x'));
  std::string bytes(2 * kPage, 'u');
  Pages::Protect(Bytes() + kPage, PAGE_NOACCESS);
  block.ReadFrom(bytes.data(), kPage + 1);
  EXPECT_EQ(bytes, std::string(2 * kPage, 'u'));
  block.ReadFrom(bytes.data(), kPage);
  EXPECT_EQ(bytes, std::string(kPage, 'x') + std::string(kPage, 'u'));
}

TEST_F(ReadFromTest, NeedsNoWritableBlock) {
  Hold("0123456789");
  Pages::Protect(Bytes(), PAGE_READONLY);
  char bytes[] = "unchanged";
  block.ReadFrom(bytes, 4);
  EXPECT_STREQ(bytes, "0123anged");
}

TEST_F(ReadFromTest, MovesBytesWithinTheBlock) {
  Hold("0123456789");
  block.ReadFrom(Bytes() + 2, 8);
  EXPECT_EQ(Held(10), "0101234567");
  block.ReadFrom(Bytes(), 10);
  EXPECT_EQ(Held(10), "0101234567");
}

TEST_F(WriteToTest, CopiesToTheStartOfTheBlockAndNoMore) {
  Hold("0123456789");
  const char bytes[] = "abcdefgh";
  block.WriteTo(bytes, 4);
  EXPECT_EQ(Held(10), "abcd456789");
}

TEST_F(WriteToTest, IsWhatReadFromReads) {
  std::string written(2 * kPage, '\0');
  for (std::size_t at = 0; at < written.size(); ++at) written[at] = static_cast<char>(at * 7);
  block.Allocate(written.size());
  block.WriteTo(written.data(), written.size());
  std::string read(written.size(), 'x');
  block.ReadFrom(read.data(), read.size());
  EXPECT_TRUE(read == written);
}

TEST_F(WriteToTest, DoesNothingWithoutABlock) {
  block.WriteTo("text", 4);
  EXPECT_EQ(block.Handle(), nullptr);
  block.Allocate(100);
  block.ReleaseMemory();
  block.WriteTo("text", 4);
  EXPECT_EQ(block.Handle(), nullptr);
}

TEST_F(WriteToTest, CopiesNothingForLength0WhateverTheSource) {
  Hold("0123456789");
  block.WriteTo("text", 0);
  block.WriteTo(nullptr, 0);
  block.WriteTo(FreedAddress(), 0);
  EXPECT_EQ(Held(10), "0123456789");
}

TEST_F(WriteToTest, DoesNothingForASourceThatIsNoMemory) {
  Hold("0123456789");
  for (const char* bad :
       {static_cast<char*>(nullptr), reinterpret_cast<char*>(1), FreedAddress(), reinterpret_cast<char*>(0xFFFFFFF0)})
    block.WriteTo(bad, 10);
  block.WriteTo(reinterpret_cast<const char*>(0xFFFFFFF0), 0x20);  // around the end of all addresses
  EXPECT_EQ(Held(10), "0123456789");
}

TEST_F(WriteToTest, TakesASourceThatCanOnlyBeRead) {
  Hold("0123456789");
  const Pages source(1);
  std::strcpy(source.Start(), "abcd");
  source.Protect(PAGE_READONLY);
  block.WriteTo(source.Start(), 4);
  EXPECT_EQ(Held(10), "abcd456789");
}

TEST_F(WriteToTest, DoesNothingForASourceThatCannotBeRead) {
  Hold("0123456789");
  const Pages source(1);
  source.Protect(PAGE_NOACCESS);
  block.WriteTo(source.Start(), 4);
  EXPECT_EQ(Held(10), "0123456789");
}

TEST_F(WriteToTest, CopiesNothingAtAllWhenOnlyTheEndOfTheSourceCannotBeRead) {
  Hold(std::string(100, 'x'));
  const Pages source(1);
  block.WriteTo(source.Page(1) - 50, 51);
  EXPECT_EQ(Held(100), std::string(100, 'x'));
  block.WriteTo(source.Page(1) - 50, 50);
  EXPECT_EQ(Held(100), std::string(50, '\0') + std::string(50, 'x')) << "up to the last byte";
}

// The system tells writable from unwritable by whole pages.
TEST_F(WriteToTest, ReachesToTheEndOfTheBlocksLastPageAndCopiesNothingBeyond) {
  Hold("0123456789");
  ASSERT_TRUE(IsFree(Bytes() + kPage));
  const std::string bytes(2 * kPage, 'x');
  block.WriteTo(bytes.data(), kPage + 1);
  EXPECT_EQ(Held(kPage), "0123456789" + std::string(kPage - 10, '\0'));
  block.WriteTo(bytes.data(), kPage);
  EXPECT_EQ(Held(kPage), std::string(kPage, 'x'));
}

TEST_F(WriteToTest, DoesNothingForALengthOfNearlyAllAddresses) {
  Hold("0123456789");
  for (const std::size_t length : {0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) block.WriteTo("text", length);
  EXPECT_EQ(Held(10), "0123456789");
}

TEST_F(WriteToTest, DoesNothingWhenTheBlockCannotBeWritten) {
  Hold(std::string(2 * kPage, 'x'));
  const std::string bytes(2 * kPage, 'w');
  Pages::Protect(Bytes() + kPage, PAGE_READONLY);
  block.WriteTo(bytes.data(), kPage + 1);
  EXPECT_EQ(Held(2 * kPage), std::string(2 * kPage, 'x'));
  block.WriteTo(bytes.data(), kPage);
  EXPECT_EQ(Held(2 * kPage), std::string(kPage, 'w') + std::string(kPage, 'x'));
}

TEST_F(WriteToTest, MovesBytesWithinTheBlock) {
  Hold("0123456789");
  block.WriteTo(Bytes() + 2, 8);
  EXPECT_EQ(Held(10), "2345678989");
  block.WriteTo(Bytes(), 10);
  EXPECT_EQ(Held(10), "2345678989");
}

TEST_F(ExtractStringTest, IsTheTextUpToItsZero) {
  EXPECT_EQ(block.ExtractString("text\0more", 100), "text") << "no block is needed";
  EXPECT_EQ(block.ExtractString("", 100), "");
}

TEST_F(ExtractStringTest, FindsATextInsideTheBlock) {
  Hold(std::string("one\0two\0", 8));
  EXPECT_EQ(block.ExtractString(Bytes(), 100), "one");
  EXPECT_EQ(block.ExtractString(Bytes() + 4, 100), "two");
  EXPECT_EQ(block.ExtractString(Bytes() + 5, 100), "wo");
}

TEST_F(ExtractStringTest, KeepsTheBytesOfTheSystemsCodePage) {
  std::string every;
  for (int byte = 1; byte < 256; ++byte) every += static_cast<char>(byte);
  EXPECT_EQ(block.ExtractString(every.c_str(), 1000), every);
}

TEST_F(ExtractStringTest, IsTheWholeTextWhateverTheLimit) {
  const std::string text = "0123456789";
  for (const std::size_t limit : {0u, 1u, 9u, 10u, 11u, 1000u, 0x7FFFFFFFu, 0xFFFFFFFFu})
    EXPECT_EQ(block.ExtractString(text.c_str(), limit), text) << limit;
}

TEST_F(ExtractStringTest, TakesALongText) {
  const std::string text(1000000, 't');
  EXPECT_TRUE(block.ExtractString(text.c_str(), 0x10000) == text);
  EXPECT_TRUE(block.ExtractString(text.c_str(), 2000000) == text);
}

TEST_F(ExtractStringTest, IsEmptyForAnAddressThatIsNoMemory) {
  const Pages reserved(0);
  for (const char* bad : {static_cast<const char*>(nullptr), reinterpret_cast<const char*>(1),
                          reinterpret_cast<const char*>(0xFFFFFFF0), static_cast<const char*>(reserved.Start())})
    for (const std::size_t limit : {0u, 1u, 1000u}) EXPECT_EQ(block.ExtractString(bad, limit), "") << limit;
  for (const std::size_t limit : {0u, 1u, 1000u}) EXPECT_EQ(block.ExtractString(FreedAddress(), limit), "") << limit;
}

TEST_F(ExtractStringTest, IsEmptyForAPageThatCannotBeRead) {
  const Pages pages(1);
  std::strcpy(pages.Start(), "text");
  pages.Protect(PAGE_NOACCESS);
  EXPECT_EQ(block.ExtractString(pages.Start(), 100), "");
  pages.Protect(PAGE_READONLY);
  EXPECT_EQ(block.ExtractString(pages.Start(), 100), "text") << "reading is enough";
}

TEST_F(ExtractStringTest, TakesATextWhoseZeroIsTheLastByteThatCanBeRead) {
  const Pages pages(1);
  std::strcpy(pages.Page(1) - 5, "text");
  EXPECT_EQ(block.ExtractString(pages.Page(1) - 5, 100), "text");
  EXPECT_EQ(block.ExtractString(pages.Page(1) - 1, 100), "");
}

TEST_F(ExtractStringTest, IsEmptyForATextThatRunsIntoWhatCannotBeRead) {
  const Pages pages(1);
  char* const text = pages.Page(1) - 4;
  std::memcpy(text, "text", 4);
  EXPECT_EQ(block.ExtractString(text, 100), "");
  EXPECT_EQ(block.ExtractString(text, 5), "");
  for (const std::size_t limit : {4u, 3u, 0u})
    EXPECT_EQ(block.ExtractString(text, limit), "") << "the address passes its test with the limit " << limit;
}

TEST_F(ExtractStringTest, CrossesPages) {
  const Pages pages(2);
  std::strcpy(pages.Page(1) - 2, "text");
  EXPECT_EQ(block.ExtractString(pages.Page(1) - 2, 100), "text");
}
