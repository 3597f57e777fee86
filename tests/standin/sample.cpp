// A program for the stand-in's own tests: sample.exe COMMAND ARGUMENT ..., each command one call or two of the system.
// Writes what they answered to answers.txt in the current folder, a line a command.
#include <windows.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <map>
#include <string>

namespace {

std::string Answer(std::uint64_t result) {
  const DWORD error = ::GetLastError();
  return std::to_string(static_cast<std::int32_t>(result)) + " " + std::to_string(error);
}

template <class Function>
Function* Late(const char* name, const char* library = "kernel32.dll") {
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA(library), name)));
}

std::wstring Wide(const std::string& text) { return {text.begin(), text.end()}; }

std::string Delete(const std::string& path) {
  const auto function = Late<BOOL WINAPI(LPCWSTR)>("DeleteFileW");
  return function != nullptr ? Answer(static_cast<std::uint32_t>(function(Wide(path).c_str()))) : "missing";
}

std::string Remove(const std::string& path) {
  return Answer(static_cast<std::uint32_t>(Late<BOOL WINAPI(LPCWSTR)>("RemoveDirectoryW")(Wide(path).c_str())));
}

std::string Attributes(const std::string& path) { return Answer(::GetFileAttributesA(path.c_str())); }

// Opens what is there; with "+" before the path lets others delete it meanwhile.
std::string Open(const std::string& path) {
  const bool shared = path.front() == '+';
  const DWORD share = FILE_SHARE_READ | (shared ? FILE_SHARE_DELETE : 0);
  const HANDLE file =
      ::CreateFileA(path.c_str() + shared, 0, share, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  return file != INVALID_HANDLE_VALUE ? "opened" : Answer(0);
}

std::string List(const std::string& mask) {
  WIN32_FIND_DATAA found;
  const HANDLE find = ::FindFirstFileA(mask.c_str(), &found);
  std::string names;
  for (BOOL more = find != INVALID_HANDLE_VALUE; more; more = ::FindNextFileA(find, &found))
    names += std::string(found.cFileName) + "=" + std::to_string(found.dwReserved0 >> 24) + " ";
  return names;
}

std::string Version(const std::string&) {
  OSVERSIONINFOA told{};
  told.dwOSVersionInfoSize = sizeof told;
  ::GetVersionExA(&told);
  return std::to_string(told.dwMajorVersion) + "." + std::to_string(told.dwMinorVersion) + "." +
         std::to_string(told.dwBuildNumber) + "/" + std::to_string(told.dwPlatformId);
}

std::string Wait(const std::string& milliseconds) {
  const DWORD start = ::GetTickCount();
  ::Sleep(static_cast<DWORD>(std::atoi(milliseconds.c_str())));
  return std::to_string(::GetTickCount() - start);
}

std::string DeleteKey(const std::string& path) {
  HKEY key = nullptr;
  ::RegCreateKeyA(HKEY_CURRENT_USER, (path + "\\deeper").c_str(), &key);
  ::RegCloseKey(key);
  return std::to_string(::RegDeleteKeyA(HKEY_CURRENT_USER, path.c_str()));
}

// The status of a call that has one, as an error code.
std::string Close(const std::string&) {
  const HANDLE event = ::CreateEventA(nullptr, TRUE, FALSE, nullptr);
  const LONG status = Late<LONG WINAPI(HANDLE)>("NtClose", "ntdll.dll")(event);
  return status >= 0 ? "closed" : std::to_string(Late<ULONG WINAPI(LONG)>("RtlNtStatusToDosError", "ntdll.dll")(status));
}

// The C runtime leaves the arguments to its caller.
std::string Allocate(const std::string& size) {
  void* const memory = std::malloc(static_cast<std::size_t>(std::atoi(size.c_str())));
  std::free(memory);
  return memory != nullptr ? "memory" : "none";
}

std::string End(const std::string& code) { ::ExitProcess(static_cast<UINT>(std::atoi(code.c_str()))); }

std::uint32_t StackPointer() {
  std::uint32_t pointer;
  __asm__ volatile("movl %%esp, %0" : "=r"(pointer));
  return pointer;
}

const std::map<std::string, std::function<std::string(const std::string&)>> kCommands = {
    {"delete", &Delete},   {"remove", &Remove}, {"attributes", &Attributes}, {"open", &Open},         {"list", &List},
    {"version", &Version}, {"wait", &Wait},     {"deletekey", &DeleteKey},   {"allocate", &Allocate}, {"end", &End},
    {"close", &Close},
};

}  // namespace

int main(int count, char** words) {
  std::ofstream answers("answers.txt");
  for (int i = 1; i + 1 < count; i += 2) {
    const auto& command = kCommands.at(words[i]);
    const std::uint32_t before = StackPointer();
    const std::string answer = command(words[i + 1]);
    answers << answer << (StackPointer() == before ? "" : " and the stack is broken") << std::endl;
  }
  return 0;
}
