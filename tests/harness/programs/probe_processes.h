// Processes of the prefix: listed, started on the desktop of the program under test and watched to their end.
#pragma once

#include "probe_basics.h"
#include "probe_other_process.h"

#include <windows.h>

#include <tlhelp32.h>

#include <map>

inline std::map<DWORD, HANDLE> startedProcesses;
inline std::wstring desktopName;

inline std::string processes(const Words&) {
  json::Array all;
  const HANDLE list = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  for (BOOL more = ::Process32FirstW(list, &entry); more; more = ::Process32NextW(list, &entry))
    all.add(json::Object()
                .number("pid", entry.th32ProcessID)
                .number("parent", entry.th32ParentProcessID)
                .text("exe", entry.szExeFile)
                .done());
  ::CloseHandle(list);
  return all.done();
}

// Into a program that has not run yet: libraries of the system have the same place in every process.
inline bool loadBefore(const PROCESS_INFORMATION& program, const std::wstring& library) {
  const SIZE_T size = (library.size() + 1) * sizeof(wchar_t);
  void* const name = ::VirtualAllocEx(program.hProcess, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
  if (!name || !::WriteProcessMemory(program.hProcess, name, library.c_str(), size, nullptr)) return false;
  const auto load = reinterpret_cast<LPTHREAD_START_ROUTINE>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"kernel32.dll"), "LoadLibraryW")));
  const HANDLE thread = ::CreateRemoteThread(program.hProcess, nullptr, 0, load, name, 0, nullptr);
  DWORD module = 0;
  const bool loaded = thread && ::WaitForSingleObject(thread, 30000) == WAIT_OBJECT_0 &&
                      ::GetExitCodeThread(thread, &module) && module != 0 && module != STILL_ACTIVE;
  ::CloseHandle(thread);
  return loaded;
}

// In a folder, a command line; with a library in it when one is named.
inline std::string start(const Words& words) {
  std::wstring folder = words.at(1), line = words.at(2);
  STARTUPINFOW how{};
  how.cb = sizeof how;
  how.lpDesktop = desktopName.data();
  PROCESS_INFORMATION process{};
  if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS | CREATE_SUSPENDED, nullptr,
                        folder.c_str(), &how, &process))
    return failure("could not start, error " + std::to_string(::GetLastError()));
  if (words.size() > 3 && !loadBefore(process, words[3])) {
    ::TerminateProcess(process.hProcess, 1);
    return failure("the library was not loaded");
  }
  if (!OtherProcess(process.dwProcessId).addWaitingThread()) {
    ::TerminateProcess(process.hProcess, 1);
    return failure("no thread was made in the program");
  }
  ::ResumeThread(process.hThread);
  ::CloseHandle(process.hThread);
  startedProcesses[process.dwProcessId] = process.hProcess;
  return json::Object().number("pid", process.dwProcessId).done();
}

// Only for processes that the probe started itself, whose handles it holds: their end cannot be missed.
inline std::string ended(const Words& words) {
  const auto found = startedProcesses.find(static_cast<DWORD>(toNumber(words.at(1))));
  if (found == startedProcesses.end()) return failure("not a process of the probe");
  DWORD code = 0;
  const bool over = ::WaitForSingleObject(found->second, 0) == WAIT_OBJECT_0 && ::GetExitCodeProcess(found->second, &code);
  return json::Object().flag("ended", over).number("code", code).done();
}

inline std::string terminate(const Words& words) {
  const auto found = startedProcesses.find(static_cast<DWORD>(toNumber(words.at(1))));
  if (found == startedProcesses.end()) return failure("not a process of the probe");
  return json::Object().flag("done", ::TerminateProcess(found->second, 1)).done();
}

inline bool callOnProcess(const char* function, HANDLE process) {
  using Function = LONG(WINAPI*)(HANDLE);
  const auto call =
      reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), function)));
  return call && call(process) >= 0;
}

// As a debugger does it: the process runs no instruction until it is let go again.
inline std::string halt(const Words& words) {
  const auto found = startedProcesses.find(static_cast<DWORD>(toNumber(words.at(1))));
  if (found == startedProcesses.end()) return failure("not a process of the probe");
  const char* const name = toNumber(words.at(2)) != 0 ? "NtSuspendProcess" : "NtResumeProcess";
  return json::Object().flag("done", callOnProcess(name, found->second)).done();
}

// Lets a halted process go for so many microseconds.
inline std::string step(const Words& words) {
  const auto found = startedProcesses.find(static_cast<DWORD>(toNumber(words.at(1))));
  if (found == startedProcesses.end()) return failure("not a process of the probe");
  LARGE_INTEGER rate{}, begin{}, now{};
  ::QueryPerformanceFrequency(&rate);
  const bool resumed = callOnProcess("NtResumeProcess", found->second);
  for (::QueryPerformanceCounter(&begin), now = begin;
       (now.QuadPart - begin.QuadPart) * 1000000 < toNumber(words.at(2)) * rate.QuadPart;)
    ::QueryPerformanceCounter(&now);
  return json::Object().flag("done", resumed && callOnProcess("NtSuspendProcess", found->second)).done();
}
