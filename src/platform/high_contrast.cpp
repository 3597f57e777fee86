#include "platform/high_contrast.h"

#include "platform/win32.h"

namespace platform {

// Its schemes have one ground for dialogs and for what is in them.
bool IsHighContrast() {
  if (::GetSysColor(COLOR_BTNFACE) == ::GetSysColor(COLOR_WINDOW)) return true;
  HIGHCONTRASTA scheme{};
  scheme.cbSize = sizeof scheme;
  return ::SystemParametersInfoA(SPI_GETHIGHCONTRAST, sizeof scheme, &scheme, 0) != 0 &&
         (scheme.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

}  // namespace platform
