#include "platform/Reg32.h"

#include "platform/ErroHandle.h"
#include "platform/handles.h"
#include "platform/os_name.h"
#include "platform/text_value.h"

namespace platform {

namespace {

UniqueKey OpenOrCreate(HKEY root, const std::string& subKey) {
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

}  // namespace

void SaveKeyValue(HKEY root, const std::string& subKey, const std::string& valueName, const std::string& value, DWORD type) {
  reportAndLeave("Reg32,SaveKeyValue", [&] {
    const UniqueKey key = OpenOrCreate(root, subKey);
    // The pair of types and the length without the terminating zero are meant; other programs read what they know.
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

std::optional<std::string> TextValue(HKEY root, const std::string& subKey, const std::string& valueName) {
  HKEY opened = nullptr;
  if (::RegOpenKeyExA(root, subKey.c_str(), 0, KEY_QUERY_VALUE, &opened) != ERROR_SUCCESS) return {};
  const UniqueKey key(opened);
  DWORD type = 0;
  DWORD size = 0;
  if (::RegQueryValueExA(key.get(), valueName.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS || type != REG_SZ)
    return {};
  std::string text(size, '\0');
  BYTE* const bytes = reinterpret_cast<BYTE*>(text.data());
  if (::RegQueryValueExA(key.get(), valueName.c_str(), nullptr, &type, bytes, &size) != ERROR_SUCCESS || type != REG_SZ)
    return {};
  text.resize(size);
  return text.substr(0, text.find('\0'));
}

void DeleteValue(HKEY root, const std::string& subKey, const std::string& valueName) {
  reportAndLeave("Reg32,DeleteValue", [&] {
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
