#include "platform/Reg32.h"

#include "platform/ErroHandle.h"
#include "platform/handles.h"
#include "platform/os_name.h"
#include "platform/plain_key.h"
#include "platform/system_functions.h"
#include "platform/text_value.h"
#include "platform/wide_system.h"

namespace platform {

namespace {

bool LeadsThroughALink(HKEY root, const std::string& subKey) {
  UniqueKey key;
  return OpenPlainKey(root, subKey, KEY_QUERY_VALUE, key) == ERROR_CANT_RESOLVE_FILENAME;
}

UniqueKey OpenOrCreate(HKEY root, const std::string& subKey) {
  if (LeadsThroughALink(root, subKey)) return {};
  HKEY key = nullptr;
  if (::RegOpenKeyExA(root, subKey.c_str(), 0, kRegistryAccess, &key) == ERROR_SUCCESS) return UniqueKey(key);
  char noClass[] = "";
  if (::RegCreateKeyExA(root, subKey.c_str(), 0, noClass, 0, kRegistryAccess, nullptr, &key, nullptr) == ERROR_SUCCESS)
    return UniqueKey(key);
  if (::RegCreateKeyA(root, subKey.c_str(), &key) == ERROR_SUCCESS) return UniqueKey(key);
  return {};
}

UniqueKey OpenPlainly(HKEY root, const std::string& subKey) {
  HKEY key = nullptr;
  return ::RegOpenKeyA(root, subKey.c_str(), &key) == ERROR_SUCCESS ? UniqueKey(key) : UniqueKey();
}

LONG LookAtValue(HKEY root, const std::string& subKey, const std::string& valueName, DWORD& type) {
  HKEY opened = nullptr;
  const LONG status = ::RegOpenKeyExA(root, subKey.c_str(), 0, KEY_QUERY_VALUE, &opened);
  if (status != ERROR_SUCCESS) return status;
  const UniqueKey key(opened);
  return ::RegQueryValueExA(key.get(), valueName.c_str(), nullptr, &type, nullptr, nullptr);
}

}  // namespace

void SaveKeyValue(HKEY root, const std::string& subKey, const std::string& valueName, const std::string& value, DWORD type) {
  reportAndLeave("Reg32,SaveKeyValue", [&] {
    const UniqueKey key = OpenOrCreate(root, subKey);
    // Types 0 and 1, and a length without the terminating zero: the values of every installation are stored so.
    if (type == REG_NONE || type == REG_SZ)
      ::RegSetValueExA(key.get(), valueName.c_str(), 0, type, reinterpret_cast<const BYTE*>(value.data()),
                       static_cast<DWORD>(value.size()));
  });
}

std::int32_t GetSettingString(HKEY root, const std::string& subKey, const std::string& valueName,
                              const std::int32_t& defaultValue) {
  std::int32_t result = defaultValue;
  reportAndLeave("Reg32,GetSettingString", [&] {
    const UniqueKey key = OpenPlainly(root, subKey);
    DWORD type = 0;
    DWORD size = 0;
    if (::RegQueryValueExA(key.get(), valueName.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS || type != REG_SZ)
      return;
    std::string buffer(size, ' ');
    ::RegQueryValueExA(key.get(), valueName.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(buffer.data()), &size);
    result = ToLong(buffer.substr(0, buffer.find('\0')));
  });
  return result;
}

std::optional<WideText> TextValue(HKEY root, const WideText& subKey, const WideText& valueName) {
  const bool wide = UsesWideNames();
  HKEY opened = nullptr;
  if ((wide ? late::RegOpenKeyExWide(root, subKey.c_str(), 0, KEY_QUERY_VALUE, &opened)
            : ::RegOpenKeyExA(root, Narrow(subKey).c_str(), 0, KEY_QUERY_VALUE, &opened)) != ERROR_SUCCESS)
    return {};
  const UniqueKey key(opened);
  DWORD type = 0;
  const auto query = [&](void* bytes, DWORD& size) {
    return wide ? late::RegQueryValueExWide(key.get(), valueName.c_str(), nullptr, &type, static_cast<BYTE*>(bytes), &size)
                : ::RegQueryValueExA(key.get(), Narrow(valueName).c_str(), nullptr, &type, static_cast<BYTE*>(bytes), &size);
  };
  DWORD size = 0;
  if (query(nullptr, size) != ERROR_SUCCESS || type != REG_SZ) return {};
  std::string bytes(size, '\0');
  if (query(bytes.data(), size) != ERROR_SUCCESS || type != REG_SZ) return {};
  bytes.resize(size);
  WideText text;
  if (wide)
    text.assign(reinterpret_cast<const wchar_t*>(bytes.data()), size / sizeof(wchar_t));
  else
    text = Widen(bytes);
  return text.substr(0, text.find(L'\0'));
}

std::optional<std::string> TextValue(HKEY root, const std::string& subKey, const std::string& valueName) {
  const std::optional<WideText> text = TextValue(root, Widen(subKey), Widen(valueName));
  if (!text) return {};
  return Narrow(*text);
}

bool IsValueMissing(HKEY root, const std::string& subKey, const std::string& valueName) {
  DWORD type = REG_NONE;
  const LONG status = LookAtValue(root, subKey, valueName, type);
  return status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND;
}

bool HoldsNoText(HKEY root, const std::string& subKey, const std::string& valueName) {
  DWORD type = REG_NONE;
  const LONG status = LookAtValue(root, subKey, valueName, type);
  return status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND || (status == ERROR_SUCCESS && type != REG_SZ);
}

void DeleteValue(HKEY root, const std::string& subKey, const std::string& valueName) {
  reportAndLeave("Reg32,DeleteValue", [&] {
    if (LeadsThroughALink(root, subKey)) return;
    const UniqueKey key = OpenPlainly(root, subKey);
    ::RegDeleteValueA(key.get(), valueName.c_str());
  });
}

std::string FindOS() {
  std::string name;
  reportAndLeave("Reg32,FindOS", [&] {
    OSVERSIONINFOA version{};
    static_assert(sizeof version == 148, "the size that every Windows accepts");
    version.dwOSVersionInfoSize = 148;
    if (!::GetVersionExA(&version)) return;
    name = OsNameOf({version.dwPlatformId, version.dwMajorVersion, version.dwMinorVersion, version.dwBuildNumber});
  });
  return name;
}

}  // namespace platform
