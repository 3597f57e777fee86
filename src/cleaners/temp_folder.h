// The user's temporary folder and what is known of it.
#pragma once

#include <string>

#include "cleaners/temp_guard.h"

namespace cleaners {

// As the system reports it, cut at the first NUL; empty when it is longer than the 254 characters asked for.
std::string GetTempDir();

TempFolderFacts FindTempFolderFacts();

}  // namespace cleaners
