#include "platform/owned_windows.h"

#include <algorithm>
#include <vector>

#include "platform/runtime_error.h"

namespace platform {

namespace {

struct Search {
  HWND owner;
  std::vector<HWND> found;  // the uppermost first
};

BOOL CALLBACK CollectOwned(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  // Nothing may leave through the system's own code.
  quietly([&] {
    if (::GetWindow(window, GW_OWNER) == search.owner) search.found.push_back(window);
  });
  return TRUE;
}

std::vector<HWND> WindowsOwnedBy(HWND owner) {
  Search search{owner, {}};
  ::EnumWindows(&CollectOwned, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

// The one that takes input, or else one that something is open over; null for none.
HWND NextOver(HWND window) {
  std::vector<HWND> over = WindowsOwnedBy(window);
  std::erase_if(over, [](HWND one) { return !::IsWindowVisible(one); });
  const auto takesInput = std::find_if(over.begin(), over.end(), [](HWND one) { return ::IsWindowEnabled(one) != 0; });
  if (takesInput != over.end()) return *takesInput;
  return over.empty() ? nullptr : over.front();
}

}  // namespace

HWND WindowInFront(HWND mainWindow) {
  HWND front = mainWindow;
  while (front != nullptr && !::IsWindowEnabled(front)) {
    const HWND next = NextOver(front);
    if (next == nullptr) break;
    front = next;
  }
  return front;
}

void ShowWindowsOver(HWND window, bool shown) {
  if (shown) ::ShowOwnedPopups(window, TRUE);
  for (const HWND owned : WindowsOwnedBy(window)) ShowWindowsOver(owned, shown);
  if (!shown) ::ShowOwnedPopups(window, FALSE);
}

}  // namespace platform
