#include "platform/runtime_error.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <vector>

using namespace platform;

namespace {

struct Wording {
  int number;
  const char* text;
};

const Wording kClassicList[] = {
    {5, "Invalid procedure call or argument"},
    {6, "Overflow"},
    {7, "Out of memory"},
    {9, "Subscript out of range"},
    {13, "Type mismatch"},
    {48, "Error in loading DLL"},
    {52, "Bad file name or number"},
    {53, "File not found"},
    {55, "File already open"},
    {57, "Device I/O error"},
    {58, "File already exists"},
    {61, "Disk full"},
    {62, "Input past end of file"},
    {67, "Too many files"},
    {68, "Device unavailable"},
    {70, "Permission denied"},
    {71, "Disk not ready"},
    {75, "Path/File access error"},
    {76, "Path not found"},
    {380, "Invalid property value"},
    {429, "ActiveX component can't create object"},
    {453, "Specified DLL function not found"},
};

class PendingErrorTest : public testing::Test {
 protected:
  PendingErrorTest() { Err.Clear(); }
  ~PendingErrorTest() override { Err.Clear(); }
};

}  // namespace

TEST(RuntimeErrorDescription, HasTheWordingOfTheClassicList) {
  for (const Wording& row : kClassicList)
    EXPECT_STREQ(RuntimeErrorDescription(row.number), row.text) << "number " << row.number;
}

TEST(RuntimeErrorDescription, OfANumberOutsideTheListIsTheGeneralOne) {
  for (const int number : {0, -1, 1, 4, 454, 32767, -2147483647})
    EXPECT_STREQ(RuntimeErrorDescription(number), "Application-defined or object-defined error") << "number " << number;
}

TEST(RuntimeErrorNumber, NamesTheNumbersOfTheClassicList) {
  const std::vector<int> named = {kInvalidCall,        kOverflow,           kOutOfMemory,       kSubscriptOutOfRange,
                                  kTypeMismatch,       kDllNotLoaded,       kBadFileName,       kFileNotFound,
                                  kFileAlreadyOpen,    kDeviceIoError,      kFileExists,        kDiskFull,
                                  kPastEndOfFile,      kTooManyFiles,       kDeviceUnavailable, kPermissionDenied,
                                  kDiskNotReady,       kAccessError,        kPathNotFound,      kInvalidPropertyValue,
                                  kCannotCreateObject, kDllFunctionNotFound};
  std::vector<int> classic;
  for (const Wording& row : kClassicList) classic.push_back(row.number);
  EXPECT_EQ(named, classic);
}

TEST(Raise, ThrowsTheNumberWithItsWording) {
  for (const Wording& row : kClassicList) {
    try {
      Raise(row.number);
      FAIL() << "nothing was raised for " << row.number;
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.number, row.number);
      EXPECT_STREQ(error.description, row.text);
    }
  }
}

TEST_F(PendingErrorTest, IsZeroAndEmptyWhenNothingFailed) {
  EXPECT_EQ(Err.Number(), 0);
  EXPECT_EQ(Err.Description(), "");
  resumeNext([] {});
  EXPECT_EQ(Err.Number(), 0);
}

TEST_F(PendingErrorTest, HoldsTheLastErrorUntilItIsCleared) {
  Err.Set({70, "Permission denied"});
  Err.Set({53, "File not found"});
  EXPECT_EQ(Err.Number(), 53);
  EXPECT_EQ(Err.Description(), "File not found");
  Err.Clear();
  EXPECT_EQ(Err.Number(), 0);
  EXPECT_EQ(Err.Description(), "");
}

TEST_F(PendingErrorTest, ResumeNextLeavesTheErrorPendingAndGoesOn) {
  std::string road;
  resumeNext([&] {
    road += "before ";
    Raise(kPathNotFound);
    road += "never ";
  });
  road += "after";
  EXPECT_EQ(road, "before after");
  EXPECT_EQ(Err.Number(), 76);
  EXPECT_EQ(Err.Description(), "Path not found");
}

TEST_F(PendingErrorTest, AStatementThatSucceedsLeavesAnEarlierErrorPending) {
  resumeNext([] { Raise(kDiskFull); });
  resumeNext([] {});
  EXPECT_EQ(Err.Number(), 61);
}

TEST_F(PendingErrorTest, ResumeNextKeepsADescriptionThatIsNotTheClassicOne) {
  resumeNext([] { throw RuntimeError{1234, "of its own"}; });
  EXPECT_EQ(Err.Number(), 1234);
  EXPECT_EQ(Err.Description(), "of its own");
}

TEST_F(PendingErrorTest, RunningOutOfMemoryIsTheRuntimeErrorSeven) {
  resumeNext([] { throw std::bad_alloc(); });
  EXPECT_EQ(Err.Number(), 7);
  EXPECT_EQ(Err.Description(), "Out of memory");
}

TEST_F(PendingErrorTest, AnInnerStatementsErrorDoesNotEndTheOuterOne) {
  bool outerWentOn = false;
  resumeNext([&] {
    resumeNext([] { Raise(kOverflow); });
    outerWentOn = true;
  });
  EXPECT_TRUE(outerWentOn);
  EXPECT_EQ(Err.Number(), 6);
}

TEST_F(PendingErrorTest, QuietlyLeavesThePendingErrorAsItWas) {
  Err.Set({kDiskFull, "Disk full"});
  quietly([] { Raise(kOverflow); });
  EXPECT_EQ(Err.Number(), kDiskFull);
}

TEST_F(PendingErrorTest, AFailureIsHandedOverAndNotLeftPending) {
  const RuntimeError failure = failureOf([] { Raise(kPathNotFound); });
  EXPECT_TRUE(failure);
  EXPECT_EQ(failure.number, kPathNotFound);
  EXPECT_STREQ(failure.description, "Path not found");
  EXPECT_FALSE(failureOf([] {}));
  EXPECT_EQ(Err.Number(), 0);
}

TEST_F(PendingErrorTest, ValueOrGivesTheOtherValueWhereTheStatementFails) {
  EXPECT_EQ(valueOr(3, [] { return 4; }), 4);
  EXPECT_EQ(valueOr(3, []() -> int { Raise(kOverflow); }), 3);
  EXPECT_EQ(valueOr(std::string("kept"), []() -> std::string { throw std::bad_alloc(); }), "kept");
  EXPECT_EQ(Err.Number(), 0);
}

TEST_F(PendingErrorTest, AnEventLeavesThePendingErrorAsItFoundIt) {
  Err.Set({kDiskFull, "Disk full"});
  {
    const PendingErrorKept kept;
    resumeNext([] { Raise(kOverflow); });
    EXPECT_EQ(Err.Number(), kOverflow);
  }
  EXPECT_EQ(Err.Number(), kDiskFull);
}
