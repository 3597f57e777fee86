#include "platform/window_text.h"

#include <cstddef>

namespace platform {

std::string TextOfWindow(HWND window) {
  std::string text(static_cast<std::size_t>(::GetWindowTextLengthA(window)) + 1, '\0');
  text.resize(static_cast<std::size_t>(::GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

std::string ClassOfWindow(HWND window) {
  char name[256] = "";
  return std::string(name, static_cast<std::size_t>(::GetClassNameA(window, name, sizeof name)));
}

LOGFONTA FontOfWindow(HWND window) {
  LOGFONTA font{};
  ::GetObjectA(reinterpret_cast<HGDIOBJ>(::SendMessageA(window, WM_GETFONT, 0, 0)), sizeof font, &font);
  return font;
}

}  // namespace platform
