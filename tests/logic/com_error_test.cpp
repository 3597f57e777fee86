#include "platform/com_error.h"

#include <gtest/gtest.h>

#include <climits>

#include "platform/runtime_error.h"

namespace {

constexpr std::int32_t Code(std::uint32_t result) { return static_cast<std::int32_t>(result); }

constexpr std::int32_t kFail = Code(0x80004005), kNoInterface = Code(0x80004002), kAccessDenied = Code(0x80070005);

template <class Check>
RuntimeError RaisedError(Check check, std::int32_t result) {
  try {
    check(result);
  } catch (const RuntimeError& error) {
    return error;
  }
  return {0, ""};
}

}  // namespace

TEST(ComError, ASuccessOfAnyKindRaisesNothing) {
  for (const std::int32_t result : {0, 1, 0x40001, INT_MAX}) {
    EXPECT_EQ(RaisedError(CheckResult, result).number, 0) << result;
    EXPECT_EQ(RaisedError(CheckCreated, result).number, 0) << result;
  }
}

TEST(ComError, AFailureRaisesItsOwnNumberAsAnAutomationError) {
  for (const std::int32_t result : {kFail, kNoInterface, kAccessDenied, -1, INT_MIN}) {
    EXPECT_EQ(RaisedError(CheckResult, result).number, result);
    EXPECT_EQ(RaisedError(CheckResult, result).description, "Automation error") << result;
  }
}

TEST(ComError, AnObjectThatIsNotToBeHadCannotBeCreated) {
  for (const std::uint32_t result : {0x80040110u, 0x80040111u, 0x80040150u, 0x80040154u, 0x800401F0u, 0x800401F8u,
                                     0x800401F9u, 0x8007007Eu, 0x8007007Fu}) {
    EXPECT_EQ(RaisedError(CheckCreated, Code(result)).number, 429) << std::hex << result;
    EXPECT_EQ(RaisedError(CheckCreated, Code(result)).description, "ActiveX component can't create object");
  }
}

TEST(ComError, TheSameCodeOfAnotherCallIsAnAutomationError) {
  EXPECT_EQ(RaisedError(CheckResult, Code(0x80040154)).number, Code(0x80040154));
}

TEST(ComError, AnyOtherFailureOfTheCreationIsAnAutomationError) {
  for (const std::int32_t result : {kFail, kNoInterface, kAccessDenied})
    EXPECT_EQ(RaisedError(CheckCreated, result).number, result);
}
