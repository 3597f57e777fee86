// Files dropped on a window as Explorer drops them: into memory of the window's own process, which frees it, and with a
// message to the window under the mouse or the nearest one around it that takes files.
#pragma once

#include "probe_basics.h"
#include "probe_other_process.h"

#include <windows.h>

#include <shlobj.h>

#include <vector>

inline HWND takerOfFiles(POINT place) {
  HWND window = ::WindowFromPoint(place);
  while (window && !(::GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_ACCEPTFILES)) window = ::GetAncestor(window, GA_PARENT);
  return window;
}

// drop X Y PATH...
inline std::string drop(const Words& words) {
  DROPFILES head{};
  head.pFiles = sizeof head;
  head.fWide = TRUE;
  head.pt = {static_cast<LONG>(toNumber(words.at(1))), static_cast<LONG>(toNumber(words.at(2)))};
  const HWND window = takerOfFiles(head.pt);
  if (!window) return failure("no window there takes files");
  ::ScreenToClient(window, &head.pt);

  std::wstring names;
  for (size_t index = 3; index < words.size(); ++index) names += words[index] + L'\0';
  names += L'\0';
  std::vector<char> block(sizeof head + names.size() * sizeof(wchar_t));
  std::memcpy(block.data(), &head, sizeof head);
  std::memcpy(block.data() + sizeof head, names.data(), block.size() - sizeof head);

  DWORD pid = 0;
  ::GetWindowThreadProcessId(window, &pid);
  const OtherProcess process(pid);
  const auto memory = process.call("kernel32.dll", "GlobalAlloc", {GMEM_FIXED, block.size()});
  if (!memory || !*memory || !process.write(reinterpret_cast<void*>(*memory), block.data(), block.size()))
    return failure("no memory in the window's process");
  return json::Object().flag("dropped", ::PostMessageW(window, WM_DROPFILES, *memory, 0)).done();
}
