#include <string>

#include "platform/controls.h"
#include "platform/high_contrast.h"

namespace platform {

namespace {

// The two colours of what is chosen in a list.
void DrawChosen(HDC context, RECT area, const std::string& text) {
  ::FillRect(context, &area, ::GetSysColorBrush(COLOR_HIGHLIGHT));
  ::SetBkMode(context, TRANSPARENT);
  ::SetTextColor(context, ::GetSysColor(COLOR_HIGHLIGHTTEXT));
  constexpr UINT kLines = DT_CENTER | DT_WORDBREAK;
  RECT lines = area;
  const int height = ::DrawTextA(context, text.c_str(), -1, &lines, kLines | DT_CALCRECT);
  RECT place = area;
  place.top += (area.bottom - area.top - height) / 2;
  ::DrawTextA(context, text.c_str(), -1, &place, kLines);
}

}  // namespace

void MarkedButton::DrawInHighContrast() const {
  if (Send(BM_GETCHECK) != BST_CHECKED || !IsHighContrast()) return;
  const HDC context = ::GetDC(Handle());
  const HGDIOBJ before = ::SelectObject(context, reinterpret_cast<HGDIOBJ>(Send(WM_GETFONT)));
  RECT area;
  ::GetClientRect(Handle(), &area);
  ::InflateRect(&area, -2, -2);
  DrawChosen(context, area, Text());
  ::InflateRect(&area, -2, -2);
  if (::GetFocus() == Handle()) ::DrawFocusRect(context, &area);
  ::SelectObject(context, before);
  ::ReleaseDC(Handle(), context);
}

// The system fills a pressed box with the scheme's light colour, on which a scheme of high contrast hides the text.
LRESULT CALLBACK MarkedButton::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const auto* const button = Of<MarkedButton>(window);
  if (button == nullptr) return ::DefWindowProcA(window, message, wParam, lParam);
  const LRESULT result = ::CallWindowProcA(button->system_, window, message, wParam, lParam);
  switch (message) {
    case WM_PAINT:
      button->DrawInHighContrast();
      break;
    case BM_SETCHECK:
    case BM_SETSTATE:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:  // the system draws at once, without a WM_PAINT
      ::InvalidateRect(window, nullptr, FALSE);
      break;
    default:
      break;
  }
  return result;
}

void MarkedButton::ShowState() {
  if (system_ == nullptr) system_ = PutBefore(this, &Procedure);
}

}  // namespace platform
