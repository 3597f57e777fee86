#include "platform/plain_key.h"

#include <string>
#include <utility>

#include "platform/system_functions.h"
#include "platform/wide_system.h"

namespace platform {

namespace {

bool IsLink(HKEY key) {
  DWORD type = REG_NONE;
  return ::RegQueryValueExA(key, "SymbolicLinkValue", nullptr, &type, nullptr, nullptr) == ERROR_SUCCESS && type == REG_LINK;
}

}  // namespace

LONG OpenKeyItself(HKEY root, std::string_view path, REGSAM access, UniqueKey& key) {
  if (!UsesWideNames()) return ERROR_CALL_NOT_IMPLEMENTED;
  UniqueKey above;
  for (HKEY parent = root;; parent = above.get()) {
    const std::size_t end = path.find('\\');
    const bool isLast = end == std::string_view::npos;
    HKEY opened = nullptr;
    const LONG status = late::RegOpenKeyExWide(parent, Widen(path.substr(0, end)).c_str(), REG_OPTION_OPEN_LINK,
                                               (isLast ? access : 0) | KEY_QUERY_VALUE, &opened);
    if (status != ERROR_SUCCESS) return status;
    UniqueKey owned(opened);
    if (isLast) {
      key = std::move(owned);
      return ERROR_SUCCESS;
    }
    if (IsLink(opened)) return ERROR_CANT_RESOLVE_FILENAME;
    above = std::move(owned);
    path.remove_prefix(end + 1);
  }
}

LONG OpenPlainKey(HKEY root, std::string_view path, REGSAM access, UniqueKey& key) {
  UniqueKey itself;
  const LONG status = OpenKeyItself(root, path, access, itself);
  if (status == ERROR_CALL_NOT_IMPLEMENTED) {
    HKEY opened = nullptr;
    const LONG plainly = ::RegOpenKeyExA(root, std::string(path).c_str(), 0, access, &opened);
    if (plainly == ERROR_SUCCESS) key.reset(opened);
    return plainly;
  }
  if (status != ERROR_SUCCESS) return status;
  if (IsLink(itself.get())) return ERROR_CANT_RESOLVE_FILENAME;
  key = std::move(itself);
  return ERROR_SUCCESS;
}

LONG MakePlainKey(HKEY root, std::string_view path, REGSAM access, UniqueKey& key) {
  const LONG status = OpenPlainKey(root, path, access, key);
  if (status != ERROR_FILE_NOT_FOUND) return status;
  HKEY made = nullptr;
  char noClass[] = "";
  const LONG making = ::RegCreateKeyExA(root, std::string(path).c_str(), 0, noClass, 0, access, nullptr, &made, nullptr);
  if (making == ERROR_SUCCESS) key.reset(made);
  return making;
}

}  // namespace platform
