// Owners of system handles. "0 is invalid" and "-1 is invalid" are different types; closing leaves the last error alone.
#pragma once

#include <utility>

#include "platform/win32.h"

namespace platform {

template <class Policy>
class UniqueHandle {
 public:
  using Value = typename Policy::Value;

  UniqueHandle() = default;
  explicit UniqueHandle(Value value) : value_(value) {}
  UniqueHandle(UniqueHandle&& other) noexcept : value_(std::exchange(other.value_, Policy::Invalid())) {}
  UniqueHandle& operator=(UniqueHandle&& other) noexcept {
    if (this != &other) reset(std::exchange(other.value_, Policy::Invalid()));
    return *this;
  }
  ~UniqueHandle() { reset(); }

  Value get() const { return value_; }
  explicit operator bool() const { return value_ != Policy::Invalid(); }
  void reset(Value value = Policy::Invalid()) {
    if (value_ != Policy::Invalid()) {
      const DWORD lastError = ::GetLastError();
      Policy::Close(value_);
      ::SetLastError(lastError);
    }
    value_ = value;
  }

 private:
  Value value_ = Policy::Invalid();
};

struct FileHandlePolicy {
  using Value = HANDLE;
  static Value Invalid() { return INVALID_HANDLE_VALUE; }
  static void Close(Value value) { ::CloseHandle(value); }
};
using UniqueFile = UniqueHandle<FileHandlePolicy>;

struct FindHandlePolicy {
  using Value = HANDLE;
  static Value Invalid() { return INVALID_HANDLE_VALUE; }
  static void Close(Value value) { ::FindClose(value); }
};
using UniqueFind = UniqueHandle<FindHandlePolicy>;

struct RegistryKeyPolicy {
  using Value = HKEY;
  static Value Invalid() { return nullptr; }
  static void Close(Value value) { ::RegCloseKey(value); }
};
using UniqueKey = UniqueHandle<RegistryKeyPolicy>;

struct GdiObjectPolicy {
  using Value = HGDIOBJ;
  static Value Invalid() { return nullptr; }
  static void Close(Value value) { ::DeleteObject(value); }
};
using UniqueGdiObject = UniqueHandle<GdiObjectPolicy>;

struct MenuPolicy {
  using Value = HMENU;
  static Value Invalid() { return nullptr; }
  static void Close(Value value) { ::DestroyMenu(value); }
};
using UniqueMenu = UniqueHandle<MenuPolicy>;

}  // namespace platform
