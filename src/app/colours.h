// The colours that the system has no name for in every version.
#pragma once

#include "platform/win32.h"

namespace app {

// Of a link: the system's own, from Windows 98 on and where it can be read; otherwise that of texts.
COLORREF LinkColour();

// Of the bar with the banner and the panels' buttons: the banner's own ground, and the dialog's in a scheme of high
// contrast.
COLORREF BarColour();

}  // namespace app
