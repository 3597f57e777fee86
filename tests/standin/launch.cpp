// launch.exe PROGRAM [ARGUMENTS]: starts a program with the stand-in in it, in the current folder. Writes the program's
// process id to process.txt beside itself, stays until the program ends and passes its exit code on; ends it when ended
// itself. When the stand-in refuses, the program does not run and the exit code is 99.
#include <windows.h>

#include <fstream>
#include <string>

namespace {

constexpr int kRefused = 99;

std::string Folder() {
  char path[MAX_PATH] = "";
  ::GetModuleFileNameA(nullptr, path, MAX_PATH);
  const std::string file = path;
  return file.substr(0, file.rfind('\\') + 1);
}

// The command line without the launcher's own path, quoted or not.
wchar_t* CommandOfProgram() {
  wchar_t* rest = ::GetCommandLineW();
  const wchar_t end = *rest == L'"' ? L'"' : L' ';
  for (++rest; *rest != L'\0' && *rest != end;) ++rest;
  if (*rest == L'"') ++rest;
  while (*rest == L' ') ++rest;
  return rest;
}

bool LoadInto(HANDLE process, const std::string& library) {
  void* const name = ::VirtualAllocEx(process, nullptr, library.size() + 1, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
  if (name == nullptr || !::WriteProcessMemory(process, name, library.c_str(), library.size() + 1, nullptr)) return false;
  // The same address in every process, since the system's libraries all lie in their places.
  const auto load = reinterpret_cast<LPTHREAD_START_ROUTINE>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("kernel32.dll"), "LoadLibraryA")));
  const HANDLE thread = ::CreateRemoteThread(process, nullptr, 0, load, name, 0, nullptr);
  DWORD module = 0;
  return thread != nullptr && ::WaitForSingleObject(thread, INFINITE) == WAIT_OBJECT_0 &&
         ::GetExitCodeThread(thread, &module) && module != 0;
}

void EndWithThisProcess(HANDLE process) {
  const HANDLE job = ::CreateJobObjectA(nullptr, nullptr);
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE | JOB_OBJECT_LIMIT_SILENT_BREAKAWAY_OK;
  ::SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
  ::AssignProcessToJobObject(job, process);
}

}  // namespace

int main() {
  STARTUPINFOW how{};
  how.cb = sizeof how;
  PROCESS_INFORMATION program{};
  if (!::CreateProcessW(nullptr, CommandOfProgram(), nullptr, nullptr, FALSE, CREATE_SUSPENDED, nullptr, nullptr, &how,
                        &program)) {
    const DWORD error = ::GetLastError();
    std::ofstream(Folder() + "refused.txt") << "the program cannot be started, error " << error;
    return kRefused;
  }
  EndWithThisProcess(program.hProcess);
  if (!LoadInto(program.hProcess, Folder() + "standin.dll")) {
    ::TerminateProcess(program.hProcess, kRefused);
    return kRefused;
  }
  std::ofstream(Folder() + "process.txt") << program.dwProcessId << std::endl;
  ::ResumeThread(program.hThread);
  ::WaitForSingleObject(program.hProcess, INFINITE);
  DWORD code = 0;
  ::GetExitCodeProcess(program.hProcess, &code);
  return static_cast<int>(code);
}
