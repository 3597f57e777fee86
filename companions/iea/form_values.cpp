#include "form_values.h"

#include <string>
#include <vector>

#include "platform/handles.h"
#include "platform/plain_key.h"
#include "platform/system_functions.h"

namespace iea {
using namespace platform;

namespace {

constexpr char kFormValues[] = "Software\\Microsoft\\Internet Explorer\\IntelliForms\\Storage1";
constexpr DWORD kLongestName = 16384;  // characters, the terminating zero among them

// The wide functions reach names outside the code page. Windows 9x has them as stubs that fail, and no browser that would
// write this key.
LONG NameAt(HKEY key, DWORD index, std::wstring& name) {
  name.resize(kLongestName);
  DWORD length = kLongestName;
  const LONG status = late::RegEnumValueWide(key, index, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
  name.resize(status == ERROR_SUCCESS ? length : 0);
  return status;
}

// All names before the first deletion, which moves the values after it up by one.
std::vector<std::wstring> NamesOfValues(HKEY key) {
  std::vector<std::wstring> names;
  std::wstring name;
  for (DWORD index = 0; NameAt(key, index, name) == ERROR_SUCCESS; ++index) names.push_back(name);
  return names;
}

}  // namespace

bool ClearFormValues() {
  UniqueKey key;
  // Whatever access the user has: the outcome is read off the key.
  const LONG status = OpenPlainKey(HKEY_CURRENT_USER, kFormValues, MAXIMUM_ALLOWED, key);
  if (status == ERROR_FILE_NOT_FOUND) return true;
  if (status != ERROR_SUCCESS) return false;
  for (const std::wstring& name : NamesOfValues(key.get())) late::RegDeleteValueWide(key.get(), name.c_str());
  std::wstring left;
  return NameAt(key.get(), 0, left) == ERROR_NO_MORE_ITEMS;
}

}  // namespace iea
