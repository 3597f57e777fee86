// Reaching into another process: memory that its windows can fill, and calls made on a thread there.
//
// Menus and the icons of message boxes belong to their process and cannot be asked for from outside; a call made inside
// can. The thread that makes the call is one of its own, so that it answers while the program sits in its menu loop.
#pragma once

#include <windows.h>

#include <tlhelp32.h>

#include <cstring>
#include <initializer_list>
#include <optional>
#include <string>

class OtherProcess {
 public:
  explicit OtherProcess(DWORD pid) : m_pid(pid), m_process(::OpenProcess(PROCESS_ALL_ACCESS, FALSE, pid)) {}
  OtherProcess(const OtherProcess&) = delete;
  OtherProcess& operator=(const OtherProcess&) = delete;
  ~OtherProcess() {
    if (m_process) ::CloseHandle(m_process);
  }
  explicit operator bool() const { return m_process != nullptr; }

  // A piece of memory in the other process. It is kept when somebody there may still write to it.
  class Memory {
   public:
    Memory(const OtherProcess& owner, size_t size)
        : m_owner(owner),
          m_size(size),
          m_address(::VirtualAllocEx(owner.m_process, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE)) {}
    Memory(const Memory&) = delete;
    Memory& operator=(const Memory&) = delete;
    ~Memory() {
      if (m_address && !m_keep) ::VirtualFreeEx(m_owner.m_process, m_address, 0, MEM_RELEASE);
    }
    void* address() const { return m_address; }
    void keep() { m_keep = true; }
    bool read(void* into, size_t size) const {
      SIZE_T got = 0;
      return m_address && size <= m_size && ::ReadProcessMemory(m_owner.m_process, m_address, into, size, &got) &&
             got == size;
    }
    bool write(const void* from, size_t size) {
      SIZE_T put = 0;
      return m_address && size <= m_size && ::WriteProcessMemory(m_owner.m_process, m_address, from, size, &put) &&
             put == size;
    }
    std::wstring text() const {
      std::wstring out(m_size / sizeof(wchar_t), L'\0');
      if (!read(out.data(), out.size() * sizeof(wchar_t))) return {};
      out.resize(std::wcslen(out.c_str()));
      return out;
    }

   private:
    const OtherProcess& m_owner;
    size_t m_size;
    void* m_address;
    bool m_keep = false;
  };

  // Into memory that is there already.
  bool write(void* address, const void* from, size_t size) const {
    SIZE_T put = 0;
    return ::WriteProcessMemory(m_process, address, from, size, &put) && put == size;
  }

  std::optional<DWORD> callUser32(const char* function, std::initializer_list<DWORD> arguments) const {
    return call("user32.dll", function, arguments);
  }

  // Gives a program that has not run yet a thread that only waits. What is done to a process from outside, for example a
  // thread made in it, is done by a thread of its own that waits; Wine interrupts another one where none does, and one
  // that is interrupted while it allocates waits for itself for ever.
  bool addWaitingThread() const {
    Memory memory(*this, kCodeSize);
    memory.keep();
    const HANDLE thread = startCall(memory, "kernel32.dll", "WaitForSingleObject", {kCurrentThread, INFINITE});
    if (thread) ::CloseHandle(thread);
    return thread != nullptr;
  }

  // Calls a stdcall function of a system module there; nothing when it did not answer in time.
  std::optional<DWORD> call(const char* module, const char* function, std::initializer_list<DWORD> arguments) const {
    Memory memory(*this, kCodeSize);
    const HANDLE thread = startCall(memory, module, function, arguments);
    if (!thread) return std::nullopt;
    DWORD result = 0;
    const bool ended = ::WaitForSingleObject(thread, 20000) == WAIT_OBJECT_0 && ::GetExitCodeThread(thread, &result);
    if (!ended) memory.keep();
    ::CloseHandle(thread);
    return ended ? std::optional(result) : std::nullopt;
  }

 private:
  static constexpr size_t kCodeSize = 128;
  static constexpr DWORD kCurrentThread = 0xFFFFFFFE;  // what GetCurrentThread answers in every thread

  // A thread there that calls the function and ends with its answer.
  HANDLE startCall(Memory& memory, const char* module, const char* function, std::initializer_list<DWORD> arguments) const {
    const auto address = functionThere(module, function);
    if (!m_process || !address) return nullptr;
    unsigned char code[kCodeSize];
    size_t used = 0;
    const auto put = [&](unsigned char op, DWORD value) {
      code[used++] = op;
      std::memcpy(code + used, &value, sizeof value);
      used += sizeof value;
    };
    for (auto it = arguments.end(); it != arguments.begin();) put(0x68, *--it);  // push value
    put(0xB8, address);                                                          // mov eax, address
    code[used++] = 0xFF;                                                         // call eax
    code[used++] = 0xD0;
    code[used++] = 0xC2;  // ret 4
    code[used++] = 0x04;
    code[used++] = 0x00;
    if (!memory.write(code, used)) return nullptr;
    LPTHREAD_START_ROUTINE start;
    void* const entry = memory.address();
    std::memcpy(&start, &entry, sizeof start);
    return ::CreateRemoteThread(m_process, nullptr, 0, start, nullptr, 0, nullptr);
  }

  DWORD functionThere(const char* moduleName, const char* function) const {
    const HMODULE here = ::GetModuleHandleA(moduleName);
    const DWORD there = liesThereToo(here) ? reinterpret_cast<DWORD>(here) : moduleThere(moduleName, here);
    const auto address = reinterpret_cast<DWORD>(reinterpret_cast<void*>(::GetProcAddress(here, function)));
    return there && address ? address - reinterpret_cast<DWORD>(here) + there : 0;
  }

  // The system's own modules mostly do; to read the list of another process's modules takes a thousand times as long. The
  // headers that begin a module hold its size, its time and its place.
  bool liesThereToo(HMODULE here) const {
    unsigned char headers[1024];
    SIZE_T got = 0;
    return ::ReadProcessMemory(m_process, here, headers, sizeof headers, &got) && got == sizeof headers &&
           std::memcmp(headers, here, sizeof headers) == 0;
  }

  DWORD moduleThere(const char* moduleName, HMODULE here) const {
    const HANDLE modules = ::CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, m_pid);
    MODULEENTRY32 module{};
    module.dwSize = sizeof module;
    // Before its first instruction a process has no list; the system's own modules lie where they do here.
    DWORD there = ::Module32First(modules, &module) ? 0 : reinterpret_cast<DWORD>(here);
    for (BOOL more = ::Module32First(modules, &module); more && !there; more = ::Module32Next(modules, &module))
      if (!::lstrcmpiA(module.szModule, moduleName)) there = reinterpret_cast<DWORD>(module.modBaseAddr);
    ::CloseHandle(modules);
    return there;
  }

  DWORD m_pid;
  HANDLE m_process;
};
