// Starting other programs.
#pragma once

#include "platform/path.h"
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

// Starts a program without the shell, by its full path, in quotes, so that a folder with a blank in it starts no other one.
// The arguments follow the path after a blank. False, with the reason as the last error, when it cannot be started. It is
// not waited for.
bool StartProgram(const Path& program, WideView arguments, int show);

// Whether this process has rights that other programs of its user have not (Windows Vista and later): what it starts has
// them too.
bool IsElevated();

}  // namespace platform
