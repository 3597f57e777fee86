// A link takes the place of a folder or a file: the test's preparation (NAME_prepare.py) does it as soon as it is asked to.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/handles.h"

using namespace platform;

// Returns when it is done.
inline void ExchangeForALink(const std::string& place) {
  UniqueFile(::CreateFileA((place + "\\please").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  const auto isDone = [done = place + "\\done"] { return ::GetFileAttributesA(done.c_str()) != INVALID_FILE_ATTRIBUTES; };
  for (int wait = 0; wait < 4000 && !isDone(); ++wait) ::Sleep(5);
  EXPECT_TRUE(isDone()) << "nobody put a link in its place below " << place;
}
