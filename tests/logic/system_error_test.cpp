#include "platform/system_error.h"

#include <gtest/gtest.h>

#include <climits>
#include <set>

#include "platform/runtime_error.h"

using namespace platform;

namespace {

struct Mapping {
  unsigned long systemError;
  int number;
  const char* meaning;
};

const Mapping kMappings[] = {
    {2, 53, "file not found"},
    {3, 76, "path not found"},
    {4, 67, "too many open files"},
    {5, 70, "access denied"},
    {8, 7, "not enough memory"},
    {14, 7, "out of memory"},
    {15, 68, "invalid drive"},
    {19, 70, "write protected"},
    {21, 71, "drive not ready"},
    {29, 57, "write fault"},
    {30, 57, "read fault"},
    {32, 70, "sharing violation"},
    {33, 70, "lock violation"},
    {38, 62, "end of file"},
    {39, 61, "handle's disk full"},
    {80, 58, "file exists"},
    {112, 61, "disk full"},
    {123, 52, "invalid name"},
    {126, 48, "module not found"},
    {127, 453, "procedure not found"},
    {145, 75, "folder not empty"},
    {183, 58, "already exists"},
    {206, 52, "name too long"},
    {267, 76, "not a folder"},
    {1117, 57, "device input or output"},
};

}  // namespace

TEST(SystemError, MapsEachKnownCodeToItsClassicNumber) {
  for (const Mapping& row : kMappings)
    EXPECT_EQ(RuntimeErrorNumberOf(row.systemError), row.number) << row.meaning << " (" << row.systemError << ")";
}

TEST(SystemError, MapsEveryOtherCodeToAnInvalidCall) {
  std::set<unsigned long> known;
  for (const Mapping& row : kMappings) known.insert(row.systemError);
  for (unsigned long code = 0; code <= 20000; ++code)
    if (known.count(code) == 0) ASSERT_EQ(RuntimeErrorNumberOf(code), 5) << "code " << code;
  EXPECT_EQ(RuntimeErrorNumberOf(0xFFFFFFFFul), 5);
  EXPECT_EQ(RuntimeErrorNumberOf(0x80070005ul), 5);
}

TEST(SystemError, IsRaisedWithTheClassicWording) {
  for (const Mapping& row : kMappings) {
    try {
      RaiseSystemError(row.systemError);
      FAIL() << "nothing was raised for " << row.meaning;
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.number, row.number) << row.meaning;
      EXPECT_STREQ(error.description, RuntimeErrorDescription(row.number)) << row.meaning;
    }
  }
}

TEST(CheckResult, RaisesNothingForASuccessOfAnyKind) {
  for (const std::int32_t result : {0, 1, 0x40001, INT_MAX}) EXPECT_NO_THROW(CheckResult(result)) << result;
}

TEST(CheckResult, RaisesAFailureUnderItsOwnNumberAsAnAutomationError) {
  for (const std::uint32_t failure : {0x80004005u, 0x80004002u, 0x80070005u, 0x80040154u, 0x80000000u, 0xFFFFFFFFu}) {
    try {
      CheckResult(static_cast<std::int32_t>(failure));
      FAIL() << "nothing was raised for " << failure;
    } catch (const RuntimeError& error) {
      EXPECT_EQ(static_cast<std::uint32_t>(error.number), failure);
      EXPECT_STREQ(error.description, "Automation error");
    }
  }
}
