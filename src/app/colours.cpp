#include "app/colours.h"

#include "app/readable_colour.h"
#include "platform/high_contrast.h"

namespace app {
using namespace platform;

namespace {

constexpr COLORREF kBannerGround = RGB(16, 28, 64);
constexpr int kHotLight = 26;  // COLOR_HOTLIGHT

}  // namespace

COLORREF LinkColour() {
  const COLORREF text = ::GetSysColor(COLOR_BTNTEXT);
  if (::GetSysColorBrush(kHotLight) == nullptr) return text;
  return ReadableOn(::GetSysColor(COLOR_BTNFACE), ::GetSysColor(kHotLight), text);
}

COLORREF BarColour() { return IsHighContrast() ? ::GetSysColor(COLOR_BTNFACE) : kBannerGround; }

}  // namespace app
