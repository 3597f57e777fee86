// Where the task-list call may be made.
#pragma once

#include <string>

#include "platform/text_value.h"

namespace automation {
using namespace platform;

// False when the OS name holds "2000", "NT" or "XP", ignoring case: those systems lack the call.
inline bool HasTaskListCall(const std::string& osName) {
  const std::string name = UpperCase(osName);
  return name.find("2000") == std::string::npos && name.find("NT") == std::string::npos &&
         name.find("XP") == std::string::npos;
}

}  // namespace automation
