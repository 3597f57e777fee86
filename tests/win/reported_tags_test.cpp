// What the procedures with a trap of their own report on line when one of their statements fails: the tag is the one that
// reports have always had, and the procedure leaves with its default. The statements are calls of the system that raise
// here.
#include <gtest/gtest.h>

#include "automation/fraScheduleManager.h"
#include "cleaners/modCleaning.h"
#include "connection.h"
#include "import_hook.h"
#include "main_window_stub.h"
#include "message_box_user.h"
#include "platform/Reg32.h"
#include "platform/runtime_error.h"
#include "platform/stop_request.h"
#include "scratch_key.h"
#include "settings/settings_variables.h"

using namespace platform;

extern "C" {
extern decltype(&::RegOpenKeyExA) importedRegOpenKeyExA __asm__("__imp__RegOpenKeyExA@20");
extern decltype(&::RegOpenKeyA) importedRegOpenKeyA __asm__("__imp__RegOpenKeyA@12");
extern decltype(&::RegEnumValueA) importedRegEnumValueA __asm__("__imp__RegEnumValueA@32");
extern decltype(&::GetVersionExA) importedGetVersionExA __asm__("__imp__GetVersionExA@4");
extern decltype(&::EnableWindow) importedEnableWindow __asm__("__imp__EnableWindow@8");
}

namespace {

using Strings = std::vector<std::string>;

LONG WINAPI OpenNoKey(HKEY, LPCSTR, DWORD, REGSAM, HKEY*) { Raise(kInvalidCall); }
LONG WINAPI OpenNoKeyPlainly(HKEY, LPCSTR, HKEY*) { Raise(kInvalidCall); }
LONG WINAPI ListNoValue(HKEY, DWORD, LPSTR, DWORD*, DWORD*, DWORD*, BYTE*, DWORD*) { Raise(kInvalidCall); }
BOOL WINAPI TellNoVersion(OSVERSIONINFOA*) { Raise(kOverflow); }
BOOL WINAPI EnableNothing(HWND, BOOL) { Raise(kOutOfMemory); }

class ReportedTags : public testing::Test {
 protected:
  void SetUp() override { GoOnline(), Err.Clear(); }
  void TearDown() override { EXPECT_EQ(Err.Number(), 0) << "an error is left pending: " << Err.Description(); }

  Strings Texts() const { return user.Texts(); }

  MessageBoxUser user;
};

}  // namespace

TEST_F(ReportedTags, NameTheSavingOfAValue) {
  const ImportHook hook(importedRegOpenKeyExA, &OpenNoKey);
  SaveKeyValue(HKEY_CURRENT_USER, "Software\\QuellixTest", "name", "text", REG_SZ);
  EXPECT_EQ(Texts(), Strings{"Reg32,SaveKeyValue5Invalid procedure call or argument"});
}

TEST_F(ReportedTags, NameTheReadingOfANumber) {
  const ImportHook hook(importedRegOpenKeyA, &OpenNoKeyPlainly);
  EXPECT_EQ(GetSettingString(HKEY_CURRENT_USER, "Software\\QuellixTest", "name", 42), 42);
  EXPECT_EQ(Texts(), Strings{"Reg32,GetSettingString5Invalid procedure call or argument"});
}

TEST_F(ReportedTags, NameTheDeletionOfAValue) {
  const ImportHook hook(importedRegOpenKeyA, &OpenNoKeyPlainly);
  DeleteValue(HKEY_CURRENT_USER, "Software\\QuellixTest", "name");
  EXPECT_EQ(Texts(), Strings{"Reg32,DeleteValue5Invalid procedure call or argument"});
}

TEST_F(ReportedTags, NameTheNamingOfTheSystem) {
  const ImportHook hook(importedGetVersionExA, &TellNoVersion);
  EXPECT_EQ(FindOS(), "");
  EXPECT_EQ(Texts(), Strings{"Reg32,FindOS6Overflow"});
}

TEST_F(ReportedTags, NameTheFindCleanerWhoseOtherStatementsDoNotRun) {
  const ScratchKey files("Software\\Microsoft\\Windows\\Currentversion\\Explorer\\Doc Find Spec MRU");
  files.PutText("a", "secret*.doc");
  StopErase = false;
  const ImportHook hook(importedRegEnumValueA, &ListNoValue);
  cleaners::ClearFind();
  EXPECT_EQ(Texts(), Strings{"modCleaning,ClearFind5Invalid procedure call or argument"});
  EXPECT_EQ(files.Text("a"), "secret*.doc");
}

// The misspelt tag is the one of every report; what comes after the failing statement is not done.
TEST_F(ReportedTags, NameTheOptionsOfTheSchedule) {
  InitControls();
  const HWND parent = ::CreateWindowExA(0, "Static", "", WS_OVERLAPPED, 0, 0, 600, 500, nullptr, nullptr, nullptr, nullptr);
  MainWindowStub window(parent);
  automation::fraScheduleManager panel(window);
  ASSERT_NE(panel.Create(parent), nullptr);
  settings::Settings[settings::Setting::ScheduleMin] = "60";
  ::SetWindowTextA(::GetDlgItem(panel.Handle(), IDC_txtMinutes), "45");
  for (const int option : {IDC_optSchedule_0, IDC_optSchedule_1, IDC_optSchedule_2}) {
    const ImportHook hook(importedEnableWindow, &EnableNothing);
    panel.Click(option);
  }
  const std::string report = "frmMain,OptSchdule7Out of memory";
  EXPECT_EQ(Texts(), (Strings{report, report, report}));
  EXPECT_EQ(settings::Settings[settings::Setting::ScheduleMin], "60");
  panel.Click(IDC_optSchedule_2);
  EXPECT_EQ(settings::Settings[settings::Setting::ScheduleMin], "45");
  ::DestroyWindow(parent);
}
