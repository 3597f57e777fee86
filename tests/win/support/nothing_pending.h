// The state that every cleaner shares, as a test finds it and leaves it: no stop asked for, no error pending, and the
// current folder that of the test programs.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/stop_request.h"
#include "ways_of_names.h"

using namespace platform;

class NothingPending : public testing::Test {
 protected:
  void SetUp() override { Err.Clear(), StopErase = false; }
  void TearDown() override {
    StopErase = false;
    ::SetCurrentDirectoryA("C:\\test");
    EXPECT_EQ(Err.Number(), 0) << "an error is left pending: " << Err.Description();
  }
};

// The same by each way of names.
class ByEitherNames : public NothingPending, public testing::WithParamInterface<const char*> {
 protected:
  void SetUp() override { NothingPending::SetUp(), AnsiNamesOnlyForTests = ByAnsi(); }
  void TearDown() override { AnsiNamesOnlyForTests = false, NothingPending::TearDown(); }

  static bool ByAnsi() { return GetParam() == std::string("ansi"); }
};
