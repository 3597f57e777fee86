// Starting other programs.
#pragma once

#include "platform/wide_text.h"
#include "platform/win32.h"

namespace platform {

// While one lives, a program that is started gets the system's own error mode. This program's would keep from its user what
// the other one wants to say about an empty drive.
class OwnErrorModeForChildren {
 public:
  OwnErrorModeForChildren() : before_(::SetErrorMode(0)) {}
  OwnErrorModeForChildren(const OwnErrorModeForChildren&) = delete;
  OwnErrorModeForChildren& operator=(const OwnErrorModeForChildren&) = delete;
  ~OwnErrorModeForChildren() { ::SetErrorMode(before_); }

 private:
  UINT before_;
};

struct ShellStart {
  WideText verb;
  WideText what;  // a program, a file or an address
  WideText arguments = {};
  WideText folder = {};  // in which it works
  int show = SW_SHOWNORMAL;
};

// Starts it as the shell does, which also asks for consent where a program wants more rights. Raises the reason when it is
// refused.
void StartByShell(HWND owner, const ShellStart& start);

}  // namespace platform
