// The one place that shows message boxes.
#pragma once

#include <string>

#include "platform/win32.h"

namespace platform {

// Tells the user something over the window in front, and returns when it is closed; nothing where no message may be shown.
// Window events run meanwhile. The title is the application's as it is at that moment, unless one is given. `style`: MB_ of
// winuser.h.
void ShowMessage(const std::string& text, UINT style);
void ShowMessage(const std::string& text, const std::string& title, UINT style);

// The same for a question that the user has just called for, also by the icon of a window that is out of sight. Returns the
// answer (IDYES ...).
int AskUser(const std::string& question, const std::string& title, UINT style);

// While one lives, no message is shown: nobody is there to close it, and it would hold up what goes on.
class NoMessages {
 public:
  NoMessages();
  ~NoMessages();
  NoMessages(const NoMessages&) = delete;
  NoMessages& operator=(const NoMessages&) = delete;
};

// Whether a message would be shown: not while the main window is out of sight, where it would give the program away.
bool MayShowMessages();

// True while a message or a window is open that the user has to close first: nothing else is asked meanwhile.
bool IsSomethingAsked();

}  // namespace platform
