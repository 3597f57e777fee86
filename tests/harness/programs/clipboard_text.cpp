// Prints the text on the clipboard as UTF-8; nothing when there is none.
#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <string>

int main() {
  ::_setmode(::_fileno(stdout), _O_BINARY);
  while (!::OpenClipboard(nullptr)) ::Sleep(50);
  const HANDLE memory = ::GetClipboardData(CF_UNICODETEXT);
  const auto* const text = static_cast<const wchar_t*>(memory == nullptr ? nullptr : ::GlobalLock(memory));
  if (text != nullptr) {
    std::string utf8(static_cast<std::size_t>(::WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr)),
                     '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text, -1, utf8.data(), static_cast<int>(utf8.size()), nullptr, nullptr);
    std::fwrite(utf8.data(), 1, utf8.size() - 1, stdout);
  }
  ::CloseClipboard();
}
