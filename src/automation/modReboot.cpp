#include "automation/modReboot.h"

#include <string>

#include "automation/run_value.h"
#include "platform/Reg32.h"
#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "platform/system_functions.h"
#include "settings/schema.h"
#include "settings/settings_variables.h"

namespace automation {
using namespace platform;

namespace {

constexpr char kRunKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Run\\";
static_assert(EWX_REBOOT == 2 && (EWX_REBOOT | EWX_FORCE) == 6);
static_assert((TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY) == 0x28);
static_assert(sizeof(TOKEN_PRIVILEGES) == 16);

}  // namespace

bool IsWinNT() {
  OSVERSIONINFOA version{};
  static_assert(sizeof version == 148, "the size that every Windows accepts");
  version.dwOSVersionInfoSize = 148;
  return ::GetVersionExA(&version) && version.dwPlatformId == VER_PLATFORM_WIN32_NT;
}

void EnableShutdownPrivilege() {
  HANDLE token = nullptr;
  resumeNext([&] { late::OpenProcessToken(::GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token); });
  TOKEN_PRIVILEGES privileges{};
  resumeNext([&] { late::LookupPrivilegeValue("", "SeShutdownPrivilege", &privileges.Privileges[0].Luid); });
  privileges.PrivilegeCount = 1;
  privileges.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
  TOKEN_PRIVILEGES before{};
  DWORD length = 0;
  resumeNext([&] { late::AdjustTokenPrivileges(token, FALSE, &privileges, sizeof before, &before, &length); });
  // The token stays open until the process ends, which is what comes next.
}

void RebootSystem(bool force) {
  const UINT flags = force ? EWX_REBOOT | EWX_FORCE : EWX_REBOOT;
  if (IsWinNT()) EnableShutdownPrivilege();
  ::ExitWindowsEx(flags, 0);
}

void RegisterStartup() {
  if (settings::Settings[settings::Setting::LoadStartup] == "1") {
    const Path file = ProgramFile();
    const std::string data = RunValueData(file, ShortForm(file));
    if (!data.empty()) SaveKeyValue(HKEY_LOCAL_MACHINE, kRunKey, RunValueName(), data, REG_SZ);
  } else {
    DeleteValue(HKEY_LOCAL_MACHINE, kRunKey, RunValueName());
  }
}

}  // namespace automation
