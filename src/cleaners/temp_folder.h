// The user's temporary folder and what is known of it.
#pragma once

#include "cleaners/temp_guard.h"

namespace cleaners {

// As the system reports it; empty when it is longer than the 254 characters asked for.
WideText GetTempDir();

TempFolderFacts FindTempFolderFacts();

}  // namespace cleaners
