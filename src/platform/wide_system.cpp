#include "platform/wide_system.h"

#include <cstddef>

#include "platform/system_error.h"
#include "platform/system_functions.h"
#include "platform/win32.h"

namespace platform {

namespace {

// As a size. None of a text that has some letters is a failure, and an empty text instead would be taken for what was meant.
std::size_t RaiseUnlessConverted(int converted, std::size_t asked) {
  if (converted == 0 && asked != 0) RaiseSystemError(::GetLastError());
  return static_cast<std::size_t>(converted);
}

}  // namespace

std::string NarrowLike(WideView text) {
  const int length = static_cast<int>(text.size());
  std::string narrow(text.size() * 3, '\0');  // no code page takes more bytes for one of them
  const int converted = ::WideCharToMultiByte(CP_ACP, 0, text.data(), length, narrow.data(), static_cast<int>(narrow.size()),
                                              nullptr, nullptr);
  narrow.resize(RaiseUnlessConverted(converted, text.size()));
  return narrow;
}

bool UsesWideNames() {
  static const bool wide = [] {
    return late::GetFileAttributesWide &&
           (late::GetFileAttributesWide(L".") != INVALID_FILE_ATTRIBUTES || ::GetLastError() != ERROR_CALL_NOT_IMPLEMENTED);
  }();
  return wide && !AnsiNamesOnlyForTests;
}

WideText Widen(std::string_view ansi) {
  const int length = static_cast<int>(ansi.size());
  WideText wide(ansi.size(), L'\0');
  wide.resize(RaiseUnlessConverted(::MultiByteToWideChar(CP_ACP, 0, ansi.data(), length, wide.data(), length), ansi.size()));
  return wide;
}

std::optional<std::string> NarrowExactly(WideView text) {
  std::string narrow = NarrowLike(text);
  if (Widen(narrow) != text) return {};
  return narrow;
}

std::string Narrow(WideView text) {
  if (const std::optional<std::string> exact = NarrowExactly(text)) return *exact;
  std::string narrow;
  for (std::size_t at = 0; at < text.size(); ++at) narrow += NarrowExactly(text.substr(at, 1)).value_or("?");
  return narrow;
}

}  // namespace platform
