#include "automation/modReboot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "connection.h"
#include "exit_windows.h"
#include "late_calls.h"
#include "nothing_pending.h"
#include "nothing_said.h"
#include "platform/handles.h"
#include "platform/os_name.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "platform/system_functions.h"
#include "settings/settings_variables.h"

using namespace automation;
using namespace platform;
using namespace settings;

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Calls = std::vector<std::string>;

constexpr char kRunKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr char kName[] = "Quellix - 1.0";

bool IsNtSetting() {
  const char* version = std::getenv("QUELLIX_WINDOWS_VERSION");
  return version == nullptr || !std::string(version).starts_with("win9");
}

// The privilege calls: written down with their arguments, then made.
Calls privilegeCalls;
bool privilegeCallsFail = false;
HANDLE openedToken = nullptr;

template <class Function>
Function True(const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(TrueFunction("advapi32.dll", name)));
}

BOOL WINAPI RecordOpen(HANDLE process, DWORD access, HANDLE* token) {
  privilegeCalls.push_back("open " + std::string(process == ::GetCurrentProcess() ? "own" : "other") + " process, access " +
                           std::to_string(access));
  if (privilegeCallsFail) return FALSE;
  const BOOL opened = True<decltype(&RecordOpen)>("OpenProcessToken")(process, access, token);
  openedToken = *token;
  return opened;
}

BOOL WINAPI RecordLookup(LPCSTR system, LPCSTR name, LUID* identifier) {
  privilegeCalls.push_back("look up [" + std::string(system != nullptr ? system : "null") + "] " + name);
  if (privilegeCallsFail) return FALSE;
  return True<decltype(&RecordLookup)>("LookupPrivilegeValueA")(system, name, identifier);
}

BOOL WINAPI RecordAdjust(HANDLE token, BOOL disableAll, TOKEN_PRIVILEGES* record, DWORD size, TOKEN_PRIVILEGES* before,
                         DWORD* length) {
  const LUID_AND_ATTRIBUTES& privilege = record->Privileges[0];
  privilegeCalls.push_back("adjust " + std::string(token == openedToken ? "that" : "another") + " token, all " +
                           std::to_string(disableAll) + ", " + std::to_string(record->PrivilegeCount) + " privilege " +
                           std::to_string(privilege.Luid.LowPart) + " attributes " + std::to_string(privilege.Attributes) +
                           ", size " + std::to_string(size) +
                           (before != nullptr && before != record && length != nullptr ? ", with the state before" : ""));
  if (privilegeCallsFail) return FALSE;
  return True<decltype(&RecordAdjust)>("AdjustTokenPrivileges")(token, disableAll, record, size, before, length);
}

DWORD ShutdownPrivilege() {
  LUID identifier{};
  ::LookupPrivilegeValueA("", "SeShutdownPrivilege", &identifier);
  return identifier.LowPart;
}

Calls CallsOf(DWORD privilege) {
  return {"open own process, access 40", "look up [] SeShutdownPrivilege",
          "adjust that token, all 0, 1 privilege " + std::to_string(privilege) +
              " attributes 2, size 16, with the state before"};
}

// Whether the process has the privilege and it is on.
bool ShutdownIsEnabled() {
  HANDLE token = nullptr;
  ::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &token);
  alignas(TOKEN_PRIVILEGES) char buffer[4096];
  DWORD size = 0;
  ::GetTokenInformation(token, TokenPrivileges, buffer, sizeof buffer, &size);
  ::CloseHandle(token);
  const auto& all = *reinterpret_cast<TOKEN_PRIVILEGES*>(buffer);
  for (DWORD i = 0; i < all.PrivilegeCount; ++i)
    if (all.Privileges[i].Luid.LowPart == ShutdownPrivilege())
      return (all.Privileges[i].Attributes & SE_PRIVILEGE_ENABLED) != 0;
  return false;
}

class ModReboot : public NothingPending {
 protected:
  static void SetUpTestSuite() {
    ReplaceFunction("OpenProcessToken", &RecordOpen);
    ReplaceFunction("LookupPrivilegeValueA", &RecordLookup);
    ReplaceFunction("AdjustTokenPrivileges", &RecordAdjust);
    GoOffline();
  }
  void SetUp() override {
    NothingPending::SetUp();
    ASSERT_NE(std::getenv("QUELLIX_WINDOWS_VERSION"), nullptr)
        << "the test is started by its runner, which sets the version";
    privilegeCalls.clear();
    privilegeCallsFail = false;
    openedToken = nullptr;
    ExitWindowsCalls.clear();
    ExitWindowsAnswer = TRUE;
  }
};
using IsWinNTTest = ModReboot;
using EnableShutdownPrivilegeTest = ModReboot;
using RebootSystemTest = ModReboot;

class RegisterStartupTest : public ModReboot {
 protected:
  void SetUp() override {
    ModReboot::SetUp();
    Put("other", "C:\\other.exe");
  }
  void TearDown() override {
    Settings[Setting::LoadStartup] = "0";
    RegisterStartup();
    ModReboot::TearDown();
  }

  static UniqueKey RunKey() {
    HKEY key = nullptr;
    ::RegCreateKeyA(HKEY_LOCAL_MACHINE, kRunKey, &key);
    return UniqueKey(key);
  }

  static void Put(const char* name, const std::string& text) {
    ::RegSetValueExA(RunKey().get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                     static_cast<DWORD>(text.size() + 1));
  }

  // The text, with "type N: " before it when it is none.
  static std::string ValueOf(const char* name) {
    char data[1024] = "";
    DWORD type = 0, size = sizeof data;
    if (::RegQueryValueExA(RunKey().get(), name, nullptr, &type, reinterpret_cast<BYTE*>(data), &size) != ERROR_SUCCESS)
      return "(no value)";
    const std::string text(data, size);
    return (type == REG_SZ ? "" : "type " + std::to_string(type) + ": ") + text.substr(0, text.find('\0'));
  }

  static void RegisterWith(const std::string& loadStartup) {
    Settings[Setting::LoadStartup] = loadStartup;
    RegisterStartup();
  }
};

// The path that the program is told to run from; empty for the true one.
std::wstring longProgram;

DWORD WINAPI TellProgram(HMODULE module, LPWSTR path, DWORD size) {
  if (longProgram.empty()) return ::GetModuleFileNameW(module, path, size);
  const std::size_t told = std::min<std::size_t>(size, longProgram.size() + 1);
  std::copy_n(longProgram.c_str(), told, path);
  return static_cast<DWORD>(std::min<std::size_t>(size, longProgram.size()));
}
const bool told = (ReplaceFunction("GetModuleFileNameW", &TellProgram), true);

// What a copy of this program does when a test starts it with a job in its environment.
constexpr char kJob[] = "QUELLIX_TEST_JOB";
constexpr char kNameFile[] = "C:\\name.txt";

void TellOwnName() {
  wchar_t own[MAX_PATH] = L"";
  const DWORD length = ::GetModuleFileNameW(nullptr, own, MAX_PATH);
  const UniqueFile file(::CreateFileA(kNameFile, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  DWORD written = 0;
  ::WriteFile(file.get(), own, length * sizeof *own, &written, nullptr);
}

void RegisterItself() {
  Settings[Setting::LoadStartup] = "1";
  RegisterStartup();
}

// A folder with this program under another name in it, which registers itself when it runs.
class RunsElsewhere {
 public:
  RunsElsewhere(std::wstring folder, const std::wstring& name) : folder_(std::move(folder)), file_(folder_ + L"\\" + name) {
    wchar_t own[MAX_PATH] = L"";
    ::GetModuleFileNameW(nullptr, own, MAX_PATH);
    ::CreateDirectoryW(folder_.c_str(), nullptr);
    ::CopyFileW(own, file_.c_str(), FALSE);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    ::SetEnvironmentVariableA(kJob, "register");
    std::wstring commandLine = L"\"" + file_ + L"\"";
    if (::CreateProcessW(file_.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                         &process))
      Wait(process);
  }
  ~RunsElsewhere() {
    ::DeleteFileW(file_.c_str());
    ::RemoveDirectoryW(folder_.c_str());
  }
  RunsElsewhere(const RunsElsewhere&) = delete;
  RunsElsewhere& operator=(const RunsElsewhere&) = delete;

  // The program that Windows starts for the value.
  static std::wstring StartedBy(std::string value) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    ::DeleteFileA(kNameFile);
    ::SetEnvironmentVariableA(kJob, "tell");
    if (!::CreateProcessA(nullptr, value.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
      return L"nothing";
    Wait(process);
    wchar_t name[MAX_PATH] = L"";
    const UniqueFile file(::CreateFileA(kNameFile, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    DWORD read = 0;
    ::ReadFile(file.get(), name, sizeof name - sizeof *name, &read, nullptr);
    return name;
  }

  const std::wstring& File() const { return file_; }

 private:
  static void Wait(const PROCESS_INFORMATION& process) {
    ::WaitForSingleObject(process.hProcess, 30000);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
  }

  std::wstring folder_;
  std::wstring file_;
};

}  // namespace

TEST_F(IsWinNTTest, IsTrueOnTheNtFamily) { EXPECT_EQ(IsWinNT(), IsNtSetting()); }

TEST_F(EnableShutdownPrivilegeTest, MakesItsThreeCallsInTheirOrder) {
  EnableShutdownPrivilege();
  EXPECT_EQ(privilegeCalls, CallsOf(ShutdownPrivilege()));
}

TEST_F(EnableShutdownPrivilegeTest, TurnsThePrivilegeOnAndLeavesTheTokenOpen) {
  EnableShutdownPrivilege();
  EXPECT_TRUE(ShutdownIsEnabled());
  DWORD flags = 0;
  EXPECT_TRUE(::GetHandleInformation(openedToken, &flags));
}

TEST_F(EnableShutdownPrivilegeTest, GoesOnAfterEachCallThatFails) {
  privilegeCallsFail = true;
  EnableShutdownPrivilege();
  EXPECT_EQ(privilegeCalls, CallsOf(0));
}

TEST_F(RebootSystemTest, PassesTwoAndWithForceSix) {
  RebootSystem(false);
  RebootSystem(true);
  EXPECT_THAT(ExitWindowsCalls, ElementsAre(ExitWindowsCall{2, 0}, ExitWindowsCall{6, 0}));
}

TEST_F(RebootSystemTest, EnablesThePrivilegeFirstOnTheNtFamilyAndNotOnWindows9x) {
  for (const bool force : {false, true}) {
    privilegeCalls.clear();
    RebootSystem(force);
    EXPECT_EQ(privilegeCalls, IsNtSetting() ? CallsOf(ShutdownPrivilege()) : Calls());
  }
}

TEST_F(RebootSystemTest, SaysNothingWhenTheSystemRefuses) {
  const NothingSaid nothing;
  privilegeCallsFail = true;
  ExitWindowsAnswer = FALSE;
  RebootSystem(true);
  EXPECT_EQ(ExitWindowsCalls.size(), 1u) << "it is asked once";
}

TEST_F(RegisterStartupTest, WritesTheRunValueWhenTheSettingIsOne) {
  RegisterWith("1");
  EXPECT_EQ(ValueOf(kName), "C:\\test\\mod_reboot_test.exe m");
  EXPECT_EQ(ValueOf("other"), "C:\\other.exe");
}

TEST_F(RegisterStartupTest, WritesTheValueOverWhatStoodThere) {
  Put(kName, "C:\\an older place with a longer path\\Quellix.exe m");
  RegisterWith("1");
  RegisterWith("1");
  EXPECT_EQ(ValueOf(kName), "C:\\test\\mod_reboot_test.exe m");
}

TEST_F(RegisterStartupTest, DeletesTheValueForAnyOtherSetting) {
  for (const char* setting : {"0", "", "2", " 1", "True", "01"}) {
    RegisterWith("1");
    RegisterWith(setting);
    EXPECT_EQ(ValueOf(kName), "(no value)") << "[" << setting << "]";
  }
  EXPECT_EQ(ValueOf("other"), "C:\\other.exe");
}

TEST_F(RegisterStartupTest, DeletesAValueThatIsNotThereWithoutAWord) {
  const NothingSaid nothing;
  RegisterWith("0");
  RegisterWith("0");
  EXPECT_EQ(ValueOf(kName), "(no value)");
}

TEST_F(RegisterStartupTest, MakesTheRunKeyWhenItIsMissingAndMissesItNotForADeletion) {
  ::RegDeleteKeyA(HKEY_LOCAL_MACHINE, kRunKey);
  RegisterWith("0");
  HKEY key = nullptr;
  EXPECT_EQ(::RegOpenKeyExA(HKEY_LOCAL_MACHINE, kRunKey, 0, KEY_READ, &key), ERROR_FILE_NOT_FOUND);
  RegisterWith("1");
  EXPECT_EQ(ValueOf(kName), "C:\\test\\mod_reboot_test.exe m");
}

TEST_F(RegisterStartupTest, SaysNothingWhenTheRunKeyCannotBeMade) {
  const NothingSaid nothing;
  // No lasting key comes below one that goes with the session.
  constexpr char kParent[] = "Software\\Microsoft\\Windows\\CurrentVersion\\QuellixTest";
  HKEY parent = nullptr;
  ASSERT_EQ(::RegCreateKeyExA(HKEY_LOCAL_MACHINE, kParent, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &parent,
                              nullptr),
            ERROR_SUCCESS);
  ::RegOverridePredefKey(HKEY_LOCAL_MACHINE, parent);
  RegisterWith("1");
  RegisterWith("0");
  HKEY key = nullptr;
  const LONG found = ::RegOpenKeyExA(HKEY_LOCAL_MACHINE, kRunKey, 0, KEY_READ, &key);
  ::RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
  EXPECT_EQ(found, ERROR_FILE_NOT_FOUND);
  ::RegCloseKey(parent);
  ::RegDeleteKeyA(HKEY_LOCAL_MACHINE, kParent);
}

TEST_F(RegisterStartupTest, NamesAProgramInAFolderWithBlanksByItsShortForm) {
  const RunsElsewhere program(L"C:\\My own tools", L"Quellix.exe");
  ::CopyFileA("C:\\test\\mod_reboot_test.exe", "C:\\My.exe", FALSE);  // what a path that is cut at its blank names
  const std::string value = ValueOf(kName);
  EXPECT_EQ(value.find(' '), value.size() - 2) << value;
  EXPECT_EQ(value.substr(value.find('\\', 3)), "\\Quellix.exe m") << value;
  EXPECT_EQ(RunsElsewhere::StartedBy(value), program.File()) << value;
  ::DeleteFileA("C:\\My.exe");
}

TEST_F(RegisterStartupTest, NamesAProgramWithBlanksInItsOwnNameByItsShortForm) {
  const RunsElsewhere program(L"C:\\Tools", L"Quellix of mine.exe");
  const std::string value = ValueOf(kName);
  EXPECT_EQ(value.substr(0, 9), "C:\\Tools\\") << value;
  EXPECT_EQ(value.find(' '), value.size() - 2) << value;
  EXPECT_EQ(RunsElsewhere::StartedBy(value), program.File()) << value;
}

TEST_F(RegisterStartupTest, NamesAProgramOutsideAsciiAsItIs) {
  const RunsElsewhere program(L"C:\\Pr\u00FCfer", L"Qu\u00EBllix.exe");
  EXPECT_EQ(ValueOf(kName),
            "C:\\Pr\xFC"
            "fer\\Qu\xEBllix.exe m");
  EXPECT_EQ(RunsElsewhere::StartedBy(ValueOf(kName)), program.File());
}

TEST_F(RegisterStartupTest, NamesAProgramOutsideTheCodePageByItsShortForm) {
  const RunsElsewhere program(L"C:\\\u0418\u043D\u0441\u0442\u0440", L"\u041A\u0432.exe");
  EXPECT_EQ(RunsElsewhere::StartedBy(ValueOf(kName)), program.File()) << ValueOf(kName);
}

// As Windows 2000 and XP answer where there is too little room: as much as there is, cut.
TEST_F(RegisterStartupTest, WritesNothingForAPathThatIsTooLongAndCutsNone) {
  Put(kName, "C:\\older.exe m");
  longProgram = L"C:\\" + std::wstring(200, L'a') + L"\\" + std::wstring(200, L'b') + L"\\Quellix.exe";
  EXPECT_EQ(ProgramFile().Shown(), longProgram);
  RegisterWith("1");
  longProgram.clear();
  EXPECT_EQ(ValueOf(kName), "C:\\older.exe m");
}

int main(int count, char** arguments) {
  const char* job = std::getenv(kJob);
  if (job != nullptr) return (*job == 'r' ? RegisterItself : TellOwnName)(), 0;
  testing::InitGoogleTest(&count, arguments);
  return RUN_ALL_TESTS();
}
