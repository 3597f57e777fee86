// Makes the machine look on line or off line to whatever opens a web page, through the user's own proxy setting.
#pragma once

#include <cstdlib>
#include <string>

#include "platform/handles.h"
#include "platform/win32.h"

using namespace platform;

inline void UseProxy(const std::string& address) {
  constexpr char kSettings[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings";
  HKEY opened = nullptr;
  ::RegCreateKeyExA(HKEY_CURRENT_USER, kSettings, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &opened, nullptr);
  const UniqueKey key(opened);
  const DWORD enable = 1;
  ::RegSetValueExA(key.get(), "ProxyEnable", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&enable), sizeof enable);
  ::RegSetValueExA(key.get(), "ProxyServer", 0, REG_SZ, reinterpret_cast<const BYTE*>(address.c_str()),
                   static_cast<DWORD>(address.size() + 1));
}

// Every page is there: the server of the test's preparation answers for all of them.
inline void GoOnline() {
  const char* address = std::getenv("QUELLIX_TEST_PROXY");
  UseProxy(address != nullptr ? address : "the preparation of this test starts no server");
}

// No page can be opened, also on a machine with a network: nothing listens at port 1.
inline void GoOffline() { UseProxy("127.0.0.1:1"); }
