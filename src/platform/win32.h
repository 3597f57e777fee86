// The one way to windows.h: ANSI, lean, and without the macros that rename procedures of ours. The version macros of the
// oldest supported system come from the build.
#pragma once

#ifdef UNICODE
#error "The program uses the ANSI functions, the only ones that Windows 95 has."
#endif

#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX  // some standard headers of the compiler set it
#define NOMINMAX
#endif
#include <windows.h>

#undef DeleteFile
#undef GetMessage
