// How the arguments of a call are written down: texts decoded to UTF-8 and in quotes, everything else as numbers.
#include <algorithm>
#include <cstdio>

#include "standin.h"

namespace {

constexpr int kLongest = 1000;
constexpr std::uint32_t kFirstAddress = 0x10000;  // what lies below is a number, such as that of a resource

std::string Number(std::uint32_t number) {
  char text[16];
  return std::string(text, static_cast<std::size_t>(std::sprintf(text, number < kFirstAddress ? "%u" : "0x%08x", number)));
}

std::string Quoted(const wchar_t* text, int length) {
  std::string shown(3 * static_cast<std::size_t>(length) + 1, '\0');
  const int size = static_cast<int>(shown.size());
  shown.resize(
      static_cast<std::size_t>(::WideCharToMultiByte(CP_UTF8, 0, text, length, shown.data(), size, nullptr, nullptr)));
  // A line is one call.
  std::replace_if(
      shown.begin(), shown.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return '"' + shown + '"';
}

std::string Wide(const wchar_t* text) {
  return ::IsBadStringPtrW(text, kLongest) ? std::string() : Quoted(text, std::min(::lstrlenW(text), kLongest));
}

std::string Ansi(const char* text) {
  if (::IsBadStringPtrA(text, kLongest)) return {};
  wchar_t wide[kLongest];
  const int length = std::min(::lstrlenA(text), kLongest);
  return Quoted(wide, ::MultiByteToWideChar(CP_ACP, 0, text, length, wide, kLongest));
}

std::string Nt(const UNICODE_STRING* text) {
  if (::IsBadReadPtr(text, sizeof *text) || ::IsBadReadPtr(text->Buffer, text->Length)) return {};
  return Quoted(text->Buffer, std::min<int>(text->Length / sizeof(wchar_t), kLongest));
}

std::string Bytes(std::uint32_t address, std::uint32_t size) {
  if (::IsBadReadPtr(reinterpret_cast<const void*>(address), size)) return {};
  std::string shown = "#";
  for (std::uint32_t i = 0; i < size; ++i) {
    char byte[3];
    std::sprintf(byte, "%02x", reinterpret_cast<const std::uint8_t*>(address)[i]);
    shown += byte;
  }
  return shown;
}

template <class Record>
std::string Listed(const Record& found, const std::string& name) {
  const bool link = (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
  return name + " " + Number(found.dwFileAttributes) + (link ? " " + Number(found.dwReserved0) : "");
}

template <class Type>
const Type& At(std::uint32_t address) {
  return *reinterpret_cast<const Type*>(address);
}

}  // namespace

std::string ShownArgument(char kind, std::uint32_t argument) {
  std::string text;
  if (argument >= kFirstAddress) {
    if (kind == 's') text = Ansi(&At<char>(argument));
    if (kind == 'w') text = Wide(&At<wchar_t>(argument));
    if (kind == 'r') text = Bytes(argument, std::min(At<std::uint32_t>(argument), 512u));
    if (kind >= '1' && kind <= '9') text = Bytes(argument, 4 * static_cast<std::uint32_t>(kind - '0'));
    if (kind == 'u') text = Nt(&At<UNICODE_STRING>(argument));
    if (kind == 'o') text = Nt(At<OBJECT_ATTRIBUTES>(argument).ObjectName);
  }
  return text.empty() ? Number(argument) : text;
}

std::string ShownAnswer(char kind, std::uint32_t argument) {
  if (argument < kFirstAddress) return {};
  if (kind == 'S') return Ansi(&At<char>(argument));
  if (kind == 'W') return Wide(&At<wchar_t>(argument));
  if (kind == 'd') return "*" + Number(At<std::uint32_t>(argument));
  if (kind == 'f') return Listed(At<WIN32_FIND_DATAA>(argument), Ansi(At<WIN32_FIND_DATAA>(argument).cFileName));
  if (kind == 'F') return Listed(At<WIN32_FIND_DATAW>(argument), Wide(At<WIN32_FIND_DATAW>(argument).cFileName));
  return {};
}
