// A registry key that a test fills and reads without the product's help; gone before and after the test.
#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "platform/handles.h"
#include "platform/system_functions.h"
#include "platform/win32.h"

using namespace platform;

struct RegistryValue {
  DWORD type;
  std::string bytes;

  friend bool operator==(const RegistryValue&, const RegistryValue&) = default;
  friend std::ostream& operator<<(std::ostream& out, const RegistryValue& value) {
    out << "type " << value.type << ", " << value.bytes.size() << " bytes \"";
    for (const char c : value.bytes.substr(0, 80)) out << (c == '\0' ? std::string("\\0") : std::string(1, c));
    return out << '"';
  }
};

// Windows 9x, where a text value always has its terminating zero.
inline bool EndsEveryText() { return ::GetVersion() >= 0x80000000u; }

class ScratchKey {
 public:
  explicit ScratchKey(std::string path, HKEY root = HKEY_CURRENT_USER) : root_(root), path_(std::move(path)) { Remove(); }
  ScratchKey(const ScratchKey&) = delete;
  ScratchKey& operator=(const ScratchKey&) = delete;
  ~ScratchKey() { Remove(); }

  const std::string& Path() const { return path_; }

  // The key or one below it.
  bool Exists(const std::string& below = "") const { return static_cast<bool>(Open(below, KEY_READ)); }

  void Create(const std::string& below = "", DWORD options = REG_OPTION_NON_VOLATILE) const {
    HKEY key = nullptr;
    ::RegCreateKeyExA(root_, Full(below).c_str(), 0, nullptr, options, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    UniqueKey close(key);
  }

  void Remove() const { late::SHDeleteKey(root_, path_.c_str()); }

  // As many bytes as `bytes` holds: Windows NT counts a zero that follows a text, so none does. Windows 9x counts
  // for itself and ends every text.
  void Put(const std::string& name, DWORD type, const std::string& bytes, const std::string& below = "") const {
    Create(below);
    const UniqueKey key = Open(below, KEY_SET_VALUE);
    const std::string guarded = EndsEveryText() ? bytes : bytes + 'x';
    ::RegSetValueExA(key.get(), name.c_str(), 0, type, reinterpret_cast<const BYTE*>(guarded.data()),
                     static_cast<DWORD>(bytes.size()));
  }

  void PutText(const std::string& name, const std::string& text, const std::string& below = "") const {
    Put(name, REG_SZ, text + '\0', below);
  }

  std::optional<RegistryValue> Value(const std::string& name, const std::string& below = "") const {
    const UniqueKey key = Open(below, KEY_READ);
    RegistryValue value{};
    DWORD size = 0;
    if (!key || ::RegQueryValueExA(key.get(), name.c_str(), nullptr, &value.type, nullptr, &size) != ERROR_SUCCESS)
      return {};
    value.bytes.resize(size);
    BYTE* const data = reinterpret_cast<BYTE*>(value.bytes.data());
    if (::RegQueryValueExA(key.get(), name.c_str(), nullptr, &value.type, data, &size) != ERROR_SUCCESS) return {};
    value.bytes.resize(size);
    return value;
  }

  // The text of a REG_SZ value without its terminating zero; what is no text reads as a remark that no test expects.
  std::string Text(const std::string& name, const std::string& below = "") const {
    const std::optional<RegistryValue> value = Value(name, below);
    if (!value) return "(no value)";
    if (value->type != REG_SZ) return "(no text)";
    return value->bytes.substr(0, value->bytes.find('\0'));
  }

  DWORD ValueCount(const std::string& below = "") const {
    DWORD count = 0;
    const UniqueKey key = Open(below, KEY_READ);
    if (key)
      ::RegQueryInfoKeyA(key.get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr,
                         nullptr);
    return count;
  }

  UniqueKey Open(const std::string& below, REGSAM access) const {
    HKEY key = nullptr;
    const LONG status = ::RegOpenKeyExA(root_, Full(below).c_str(), 0, access, &key);
    return UniqueKey(status == ERROR_SUCCESS ? key : nullptr);
  }

 private:
  std::string Full(const std::string& below) const { return below.empty() ? path_ : path_ + "\\" + below; }

  HKEY root_;
  std::string path_;
};
