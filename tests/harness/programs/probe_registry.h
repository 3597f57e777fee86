// The registry, read and written for the tests.
#pragma once

#include "probe_basics.h"

#include <windows.h>

#include <cstring>
#include <stdexcept>
#include <utility>

inline HKEY hive(const std::wstring& name) {
  const std::pair<const wchar_t*, HKEY> known[] = {
      {L"HKCU", HKEY_CURRENT_USER}, {L"HKLM", HKEY_LOCAL_MACHINE}, {L"HKCR", HKEY_CLASSES_ROOT}, {L"HKU", HKEY_USERS}};
  for (const auto& [text, key] : known)
    if (same(name, text)) return key;
  throw std::invalid_argument("unknown hive");
}

inline std::string valueAsJson(DWORD type, const std::vector<BYTE>& data) {
  json::Object out;
  out.number("type", type).number("size", static_cast<long long>(data.size()));
  if (type == REG_SZ || type == REG_EXPAND_SZ) {
    std::wstring text(reinterpret_cast<const wchar_t*>(data.data()), data.size() / sizeof(wchar_t));
    while (!text.empty() && text.back() == L'\0') text.pop_back();
    out.text("text", text);
  } else if (type == REG_DWORD && data.size() == 4) {
    DWORD number = 0;
    std::memcpy(&number, data.data(), 4);
    out.number("number", number);
  }
  std::wstring hex;
  for (const BYTE b : data)
    for (const int half : {b >> 4, b & 15}) hex += L"0123456789abcdef"[half];
  return out.text("hex", hex).done();
}

inline std::string readValue(const Words& words) {
  HKEY key = nullptr;
  if (::RegOpenKeyExW(hive(words.at(1)), words.at(2).c_str(), 0, KEY_READ, &key)) return "null";
  DWORD type = 0, size = 0;
  std::string answer = "null";
  if (!::RegQueryValueExW(key, words.at(3).c_str(), nullptr, &type, nullptr, &size)) {
    std::vector<BYTE> data(size);
    if (!::RegQueryValueExW(key, words.at(3).c_str(), nullptr, &type, data.data(), &size)) answer = valueAsJson(type, data);
  }
  ::RegCloseKey(key);
  return answer;
}

inline std::string listKey(const Words& words) {
  HKEY key = nullptr;
  if (::RegOpenKeyExW(hive(words.at(1)), words.at(2).c_str(), 0, KEY_READ, &key)) return "null";
  json::Object values;
  json::Array keys;
  wchar_t name[512];
  for (DWORD i = 0, length = 512; !::RegEnumKeyExW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr);
       ++i, length = 512)
    keys.add(json::quoted(name));
  for (DWORD i = 0;; ++i) {
    DWORD length = 512, type = 0, size = 0;
    if (::RegEnumValueW(key, i, name, &length, nullptr, &type, nullptr, &size)) break;
    std::vector<BYTE> data(size);
    ::RegQueryValueExW(key, name, nullptr, &type, data.data(), &size);
    const std::string quoted = json::quoted(name);
    values.raw(quoted.substr(1, quoted.size() - 2), valueAsJson(type, data));
  }
  ::RegCloseKey(key);
  return json::Object().raw("values", values.done()).raw("keys", keys.done()).done();
}

inline std::string setValue(const Words& words) {
  HKEY key = nullptr;
  if (::RegCreateKeyExW(hive(words.at(1)), words.at(2).c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr))
    return failure("the key could not be made");
  const std::wstring& text = words.at(4);
  const bool number = words.size() > 5 && same(words[5], L"dword");
  const DWORD value = number ? static_cast<DWORD>(toNumber(text)) : 0;
  const LONG error = number
                         ? ::RegSetValueExW(key, words.at(3).c_str(), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), 4)
                         : ::RegSetValueExW(key, words.at(3).c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                                            static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
  ::RegCloseKey(key);
  return json::Object().flag("set", error == 0).done();
}

// A key that takes values but refuses every lasting key below it: a store that cannot be written to.
inline std::string makeVolatileKey(const Words& words) {
  HKEY key = nullptr;
  DWORD how = 0;
  if (::RegCreateKeyExW(hive(words.at(1)), words.at(2).c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_WRITE, nullptr, &key,
                        &how))
    return failure("the key could not be made");
  ::RegCloseKey(key);
  return json::Object().flag("made", how == REG_CREATED_NEW_KEY).done();
}

inline LONG deleteTree(HKEY parent, const std::wstring& path) {
  HKEY key = nullptr;
  if (const LONG error = ::RegOpenKeyExW(parent, path.c_str(), 0, KEY_READ | KEY_WRITE, &key)) return error;
  wchar_t name[512];
  for (DWORD length = 512; !::RegEnumKeyExW(key, 0, name, &length, nullptr, nullptr, nullptr, nullptr); length = 512)
    if (deleteTree(key, name)) break;
  ::RegCloseKey(key);
  return ::RegDeleteKeyW(parent, path.c_str());
}

inline std::string deleteKey(const Words& words) {
  if (words.at(2).empty()) return failure("a hive is not deleted");
  return json::Object().flag("deleted", deleteTree(hive(words.at(1)), words.at(2)) == 0).done();
}
