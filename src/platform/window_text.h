// What a window shows, and fonts that look like a window's.
#pragma once

#include <string>

#include "platform/handles.h"
#include "platform/win32.h"

namespace platform {

// The window's text in ANSI: the title of a window, the caption of a button, what is typed into a box. Empty for no window.
std::string TextOfWindow(HWND window);

// The window's class; empty for no window.
std::string ClassOfWindow(HWND window);

// The font that a dialog's window uses, to change and to make another one of.
LOGFONTA FontOfWindow(HWND window);
inline UniqueGdiObject MakeFont(const LOGFONTA& font) { return UniqueGdiObject(::CreateFontIndirectA(&font)); }

}  // namespace platform
