#include "app/colours.h"

#include "app/readable_colour.h"

namespace app {

namespace {

constexpr COLORREF kBannerGround = RGB(16, 28, 64);
constexpr int kHotLight = 26;  // COLOR_HOTLIGHT

// Its schemes have one ground for dialogs and for what is in them.
bool IsHighContrast() {
  if (::GetSysColor(COLOR_BTNFACE) == ::GetSysColor(COLOR_WINDOW)) return true;
  HIGHCONTRASTA scheme{};
  scheme.cbSize = sizeof scheme;
  return ::SystemParametersInfoA(SPI_GETHIGHCONTRAST, sizeof scheme, &scheme, 0) != 0 &&
         (scheme.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

}  // namespace

COLORREF LinkColour() {
  const COLORREF text = ::GetSysColor(COLOR_BTNTEXT);
  if (::GetSysColorBrush(kHotLight) == nullptr) return text;
  return ReadableOn(::GetSysColor(COLOR_BTNFACE), ::GetSysColor(kHotLight), text);
}

COLORREF BarColour() { return IsHighContrast() ? ::GetSysColor(COLOR_BTNFACE) : kBannerGround; }

}  // namespace app
