#include "platform/clsIni.h"

#include <gtest/gtest.h>

#include "message_box_user.h"
#include "nothing_said.h"
#include "platform/handles.h"
#include "platform/main_window.h"
#include "platform/runtime_error.h"
#include "scratch_folder.h"

using namespace platform;

namespace {

const std::string kNotAnIniFile = "The file in the IniPath property is not an ini file or doesn't exist!";
const std::string kNotFound = "The file in the IniPath property was not found!";

// The icon of the last message box, and the window that owned it.
class BoxLook {
 public:
  BoxLook() {
    icon_ = nullptr;
    owner_ = nullptr;
    ownerWasUsable_ = true;
    hook_ = ::SetWindowsHookExA(WH_CBT, &OnWindowEvent, nullptr, ::GetCurrentThreadId());
  }
  BoxLook(const BoxLook&) = delete;
  BoxLook& operator=(const BoxLook&) = delete;
  ~BoxLook() { ::UnhookWindowsHookEx(hook_); }

  HICON Icon() const { return icon_; }
  HWND Owner() const { return owner_; }
  bool OwnerWasUsable() const { return ownerWasUsable_; }

 private:
  static LRESULT CALLBACK OnWindowEvent(int code, WPARAM wParam, LPARAM lParam) {
    const HWND window = reinterpret_cast<HWND>(wParam);
    if (code == HCBT_ACTIVATE && ::GetDlgItem(window, IDOK) != nullptr) {
      ::EnumChildWindows(window, &TakeIcon, 0);
      owner_ = ::GetWindow(window, GW_OWNER);
      ownerWasUsable_ = ::IsWindowEnabled(owner_) != 0;
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
  }

  static BOOL CALLBACK TakeIcon(HWND child, LPARAM) {
    const LRESULT icon = ::SendMessageA(child, STM_GETICON, 0, 0);
    if (icon != 0) icon_ = reinterpret_cast<HICON>(icon);
    return TRUE;
  }

  static inline HICON icon_;
  static inline HWND owner_;
  static inline bool ownerWasUsable_;
  HHOOK hook_;
};

class ClsIni : public testing::Test {
 protected:
  void SetUp() override {
    Err.Clear();
    ini.SetIniPath(path);
  }
  void TearDown() override { EXPECT_EQ(Err.Number(), 0) << "an error is left pending: " << Err.Description(); }

  static std::string WindowsFolder() {
    char folder[MAX_PATH] = "";
    ::GetWindowsDirectoryA(folder, sizeof folder);
    return folder;
  }

  // The file, for others to read only.
  UniqueFile Open(DWORD access) const {
    return UniqueFile(::CreateFileA(path.c_str(), access, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
  }

  ScratchFolder folder;
  const std::string path = folder / "keep.ini";
  clsIni ini;
};
using IniPathTest = ClsIni;
using GetIniSettingTest = ClsIni;
using SaveIniSettingTest = ClsIni;

class DeleteIniTest : public ClsIni {
 protected:
  // The text of the one box that the deletion showed; empty for none.
  std::string Said() {
    const std::size_t before = user.Boxes().size();
    ini.DeleteIni();
    EXPECT_LE(user.Boxes().size(), before + 1);
    return user.Boxes().size() == before ? "" : user.Boxes().back().text;
  }

  MessageBoxUser user;
};

// The names in the Windows folder and the bytes of the system's own settings there.
std::vector<std::string> SystemSettings(const std::string& windowsFolder) {
  std::vector<std::string> state = NamesIn(windowsFolder);
  state.push_back(ReadWhole(windowsFolder + "\\win.ini"));
  state.push_back(ReadWhole(windowsFolder + "\\system.ini"));
  return state;
}

}  // namespace

TEST_F(IniPathTest, IsEmptyAfterConstruction) { EXPECT_EQ(clsIni().IniPath(), ""); }

TEST_F(IniPathTest, IsKeptAsGiven) {
  for (const char* given : {"C:\\test\\a.ini", "no file at all", "  C:/x/../y.INI  ", "*?<>|", ""}) {
    ini.SetIniPath(given);
    EXPECT_EQ(ini.IniPath(), given);
  }
}

TEST_F(IniPathTest, IsEmptiedByClearAllValuesWhichTouchesNoFile) {
  folder.File("keep.ini", "[s]\r\nk=v\r\n");
  ini.ClearAllValues();
  EXPECT_EQ(ini.IniPath(), "");
  EXPECT_EQ(ReadWhole(path), "[s]\r\nk=v\r\n");
}

TEST_F(GetIniSettingTest, IsTheValueOfTheKeyInItsSection) {
  folder.File("keep.ini", "[one]\r\nkey=first\r\nother=second\r\n[two]\r\nkey=third\r\n");
  EXPECT_EQ(ini.GetIniSetting("one", "key"), "first");
  EXPECT_EQ(ini.GetIniSetting("one", "other"), "second");
  EXPECT_EQ(ini.GetIniSetting("two", "key"), "third");
}

TEST_F(GetIniSettingTest, FindsSectionAndKeyInAnyCase) {
  folder.File("keep.ini", "[Section]\r\nKey=Value\r\n");
  EXPECT_EQ(ini.GetIniSetting("SECTION", "kEY"), "Value");
}

TEST_F(GetIniSettingTest, IsEmptyForAMissingFileSectionOrKey) {
  EXPECT_EQ(ini.GetIniSetting("one", "key"), "") << "no file";
  EXPECT_FALSE(IsThere(path)) << "reading makes no file";
  folder.File("keep.ini", "[one]\r\nkey=first\r\n");
  EXPECT_EQ(ini.GetIniSetting("two", "key"), "") << "no section";
  EXPECT_EQ(ini.GetIniSetting("one", "other"), "") << "no key";
  ini.SetIniPath(folder / "missing folder\\keep.ini");
  EXPECT_EQ(ini.GetIniSetting("one", "key"), "") << "no folder";
}

TEST_F(GetIniSettingTest, IsEmptyForAnEmptyValueAndAnEmptyFile) {
  folder.File("keep.ini", "");
  EXPECT_EQ(ini.GetIniSetting("one", "key"), "");
  folder.File("keep.ini", "[one]\r\nkey=\r\n");
  EXPECT_EQ(ini.GetIniSetting("one", "key"), "");
}

TEST_F(GetIniSettingTest, TakesAnEmptySectionOrKeyForANameAndListsNothing) {
  folder.File("keep.ini", "[one]\r\nkey=first\r\n");
  EXPECT_EQ(ini.GetIniSetting("", "key"), "");
  EXPECT_EQ(ini.GetIniSetting("one", ""), "");
  EXPECT_EQ(ini.GetIniSetting("", ""), "");
}

TEST_F(GetIniSettingTest, IsEmptyForAFolderOfTheFilesName) {
  ::CreateDirectoryA(path.c_str(), nullptr);
  EXPECT_EQ(ini.GetIniSetting("one", "key"), "");
}

TEST_F(GetIniSettingTest, IsCutTo749Characters) {
  for (const std::size_t length : {748u, 749u, 750u, 751u, 2000u}) {
    std::string value;
    while (value.size() < length) value += static_cast<char>('a' + value.size() % 26);
    folder.File("keep.ini", "[one]\r\nkey=" + value + "\r\nnext=whole\r\n");
    EXPECT_EQ(ini.GetIniSetting("one", "key"), value.substr(0, 749)) << length << " characters";
    EXPECT_EQ(ini.GetIniSetting("one", "next"), "whole") << "after " << length << " characters";
  }
}

TEST_F(GetIniSettingTest, IsEmptyForAnEmptyPathAlsoForWhatTheSystemsOwnFileHolds) {
  // The null file name is win.ini.
  ASSERT_TRUE(::WriteProfileStringA("QuellixTest", "key", "of win.ini"));
  ini.ClearAllValues();
  EXPECT_EQ(ini.GetIniSetting("QuellixTest", "key"), "");
  ::WriteProfileStringA("QuellixTest", nullptr, nullptr);
}

TEST_F(GetIniSettingTest, IsEmptyForAPathLongerThanTheSystemTakes) {
  ini.SetIniPath(folder / (std::string(5000, 'x') + ".ini"));
  EXPECT_EQ(ini.GetIniSetting("one", "key"), "");
}

TEST_F(SaveIniSettingTest, MakesTheFile) {
  ini.SaveIniSetting("one", "key", "first");
  EXPECT_EQ(ReadWhole(path), "[one]\r\nkey=first\r\n");
}

TEST_F(SaveIniSettingTest, IsWhatGetIniSettingReadsInTheSystemsCodePage) {
  const std::string umlauts = "gr\xFC\xDF \xE4\xF6, = ; [x] #";
  ini.SaveIniSetting("one", "key", umlauts);
  ini.SaveIniSetting(
      "s\xE9"
      "ction",
      "cl\xE9", "second");
  EXPECT_EQ(ini.GetIniSetting("one", "key"), umlauts);
  EXPECT_EQ(ini.GetIniSetting("s\xE9"
                              "ction",
                              "cl\xE9"),
            "second");
}

TEST_F(SaveIniSettingTest, ReplacesTheValueAndLeavesTheRestOfTheFile) {
  folder.File("keep.ini", "[one]\r\nkey=first\r\nother=second\r\n[two]\r\nkey=third\r\n");
  ini.SaveIniSetting("one", "key", "new");
  EXPECT_EQ(ini.GetIniSetting("one", "key"), "new");
  EXPECT_EQ(ini.GetIniSetting("one", "other"), "second");
  EXPECT_EQ(ini.GetIniSetting("two", "key"), "third");
}

TEST_F(SaveIniSettingTest, AddsASectionAndAKey) {
  folder.File("keep.ini", "[one]\r\nkey=first\r\n");
  ini.SaveIniSetting("one", "other", "second");
  ini.SaveIniSetting("two", "key", "third");
  EXPECT_EQ(ini.GetIniSetting("one", "key"), "first");
  EXPECT_EQ(ini.GetIniSetting("one", "other"), "second");
  EXPECT_EQ(ini.GetIniSetting("two", "key"), "third");
}

TEST_F(SaveIniSettingTest, WritesALongValueWhole) {
  const std::string value(2000, 'v');
  ini.SaveIniSetting("one", "key", value);
  EXPECT_NE(ReadWhole(path).find("key=" + value + "\r\n"), std::string::npos);
}

TEST_F(SaveIniSettingTest, KeepsTheKeyOfAnEmptyValue) {
  folder.File("keep.ini", "[one]\r\nkey=first\r\n");
  ini.SaveIniSetting("one", "key", "");
  EXPECT_EQ(ReadWhole(path), "[one]\r\nkey=\r\n");
}

TEST_F(SaveIniSettingTest, DoesNotTakeAnEmptyKeyForTheWholeSection) {
  folder.File("keep.ini", "[one]\r\nkey=first\r\n");
  ini.SaveIniSetting("one", "", "");
  EXPECT_EQ(ini.GetIniSetting("one", "key"), "first");
}

TEST_F(SaveIniSettingTest, WritesNothingForAnEmptyPath) {
  const std::vector<std::string> before = SystemSettings(WindowsFolder());
  const std::vector<std::string> hereBefore = NamesIn(".");
  ini.ClearAllValues();
  ini.SaveIniSetting("QuellixTest", "key", "value");
  EXPECT_EQ(SystemSettings(WindowsFolder()), before);
  EXPECT_EQ(NamesIn("."), hereBefore);
}

TEST_F(SaveIniSettingTest, LeavesAReadOnlyFileAsItIsAndSaysNothing) {
  const NothingSaid nothing;
  folder.File("keep.ini", "[one]\r\nkey=first\r\n");
  ::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
  // Runs for an ordinary user only: the superuser is let in, so that there is no failing write to look at.
  if (Open(GENERIC_WRITE)) GTEST_SKIP() << "for the superuser Wine opens read-only files for writing";
  ini.SaveIniSetting("one", "key", "new");
  EXPECT_EQ(ReadWhole(path), "[one]\r\nkey=first\r\n");
}

TEST_F(SaveIniSettingTest, LeavesAFileThatSomebodyHoldsAsItIsAndSaysNothing) {
  const NothingSaid nothing;
  folder.File("keep.ini", "[one]\r\nkey=first\r\n");
  const UniqueFile held = Open(GENERIC_READ);
  ASSERT_TRUE(held);
  ini.SaveIniSetting("one", "key", "new");
  EXPECT_EQ(ReadWhole(path), "[one]\r\nkey=first\r\n");
}

TEST_F(SaveIniSettingTest, SaysNothingOfAFileThatCannotBeMade) {
  const NothingSaid nothing;
  for (const std::string& name : {std::string("missing folder\\keep.ini"), std::string("a?b.ini"), std::string(5000, 'x')}) {
    ini.SetIniPath(folder / name);
    ini.SaveIniSetting("one", "key", "value");
  }
  ::CreateDirectoryA((folder / "folder.ini").c_str(), nullptr);
  ini.SetIniPath(folder / "folder.ini");
  ini.SaveIniSetting("one", "key", "value");
  EXPECT_EQ(NamesIn(folder.Path()), std::vector<std::string>{"folder.ini"});
}

TEST_F(SaveIniSettingTest, TakesANameWithoutAFolderForAFileInTheWindowsFolder) {
  const std::string name = "quellix_test.ini";
  ini.SetIniPath(name);
  ini.SaveIniSetting("one", "key", "first");
  EXPECT_EQ(ini.GetIniSetting("one", "key"), "first");
  EXPECT_TRUE(IsThere(WindowsFolder() + "\\" + name));
  EXPECT_FALSE(IsThere(name));
  ::DeleteFileA((WindowsFolder() + "\\" + name).c_str());
}

TEST_F(DeleteIniTest, DeletesTheFileAndSaysNothing) {
  const NothingSaid nothing;
  ini.SaveIniSetting("one", "key", "first");
  folder.File("other.ini");
  EXPECT_EQ(Said(), "");
  EXPECT_EQ(NamesIn(folder.Path()), std::vector<std::string>{"other.ini"});
  EXPECT_EQ(ini.IniPath(), path);
  EXPECT_EQ(ini.GetIniSetting("one", "key"), "");
}

TEST_F(DeleteIniTest, RefusesEveryOtherEnding) {
  for (const char* name : {"keep.INI", "keep.Ini", "keep.inI", "keep.txt", "keep.ini.txt", "keep.ini2", "keepini", "ini"}) {
    ini.SetIniPath(folder.File(name));
    EXPECT_EQ(Said(), kNotAnIniFile) << name;
    EXPECT_TRUE(IsThere(ini.IniPath())) << name;
  }
}

TEST_F(DeleteIniTest, RefusesTheRightFileUnderALargeSpelling) {
  folder.File("keep.ini");
  ini.SetIniPath(folder / "KEEP.INI");
  EXPECT_EQ(Said(), kNotAnIniFile);
  EXPECT_TRUE(IsThere(path));
}

TEST_F(DeleteIniTest, RefusesBlanksBehindTheEnding) {
  folder.File("keep.ini");
  ini.SetIniPath(path + " ");
  EXPECT_EQ(Said(), kNotAnIniFile);
  EXPECT_TRUE(IsThere(path));
}

TEST_F(DeleteIniTest, RefusesAnEmptyPathAndOneShorterThanTheEnding) {
  for (const char* given : {"", "i", "ini", ".in"}) {
    ini.SetIniPath(given);
    EXPECT_EQ(Said(), kNotAnIniFile) << '"' << given << '"';
  }
}

TEST_F(DeleteIniTest, RefusesAMissingFileOfAnotherEndingWithTheSameMessage) {
  ini.SetIniPath(folder / "missing.txt");
  EXPECT_EQ(Said(), kNotAnIniFile);
}

TEST_F(DeleteIniTest, SaysThatAMissingFileWasNotFound) {
  EXPECT_EQ(Said(), kNotFound);
  ini.SetIniPath(folder / "missing folder\\keep.ini");
  EXPECT_EQ(Said(), kNotFound);
  ini.SetIniPath(folder / (std::string(5000, 'x') + ".ini"));
  EXPECT_EQ(Said(), kNotFound);
}

TEST_F(DeleteIniTest, SaysTheSameOfAFileThatSomebodyHoldsAndLeavesIt) {
  folder.File("keep.ini");
  const UniqueFile held = Open(GENERIC_READ);
  ASSERT_TRUE(held);
  EXPECT_EQ(Said(), kNotFound);
  EXPECT_EQ(ReadWhole(path), "content");
}

TEST_F(DeleteIniTest, SaysTheSameOfAReadOnlyFileAndLeavesIt) {
  folder.File("keep.ini");
  ::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(Said(), kNotFound);
  EXPECT_EQ(ReadWhole(path), "content");
}

TEST_F(DeleteIniTest, SaysTheSameOfAFolderAndLeavesItWithWhatIsInIt) {
  ::CreateDirectoryA(path.c_str(), nullptr);
  EXPECT_EQ(Said(), kNotFound) << "empty";
  folder.File("keep.ini\\inner.ini");
  EXPECT_EQ(Said(), kNotFound);
  EXPECT_TRUE(IsThere(path + "\\inner.ini"));
}

TEST_F(DeleteIniTest, TakesAMaskForTheNameOfAMissingFile) {
  folder.File("keep.ini");
  for (const char* mask : {"*.ini", "k??p.ini"}) {
    ini.SetIniPath(folder / mask);
    EXPECT_EQ(Said(), kNotFound) << mask;
  }
  EXPECT_TRUE(IsThere(path));
}

TEST_F(DeleteIniTest, TakesANameThatIsTheEndingAlone) {
  ini.SetIniPath(folder.File(".ini"));
  EXPECT_EQ(Said(), "");
  EXPECT_FALSE(IsThere(folder / ".ini"));
}

TEST_F(DeleteIniTest, TakesANameWithoutAFolderForAFileInTheCurrentFolder) {
  const std::string inWindows = WindowsFolder() + "\\quellix_test.ini";
  WriteWhole("quellix_test.ini", "[one]\r\n");
  WriteWhole(inWindows, "[one]\r\n");
  ini.SetIniPath("quellix_test.ini");
  EXPECT_EQ(Said(), "");
  EXPECT_FALSE(IsThere("quellix_test.ini"));
  EXPECT_EQ(Said(), kNotFound);
  EXPECT_TRUE(IsThere(inWindows));
  ::DeleteFileA(inWindows.c_str());
}

TEST_F(DeleteIniTest, ShowsBothMessagesAsAWarningTitledErrorWithOneButton) {
  const BoxLook look;
  for (const std::string& given : {std::string(), path}) {
    ini.SetIniPath(given);
    const std::string said = Said();
    ASSERT_NE(said, "");
    EXPECT_EQ(user.Boxes().back().title, "Error") << said;
    EXPECT_EQ(user.Boxes().back().buttons, 1) << said;
    EXPECT_EQ(look.Icon(), ::LoadIconA(nullptr, IDI_EXCLAMATION)) << said;
  }
}

TEST_F(DeleteIniTest, ShowsItsMessageOverTheMainWindow) {
  const BoxLook look;
  MainWindowHandle =
      ::CreateWindowExA(0, "STATIC", "", WS_OVERLAPPEDWINDOW, 0, 0, 200, 200, nullptr, nullptr, nullptr, nullptr);
  ASSERT_NE(MainWindowHandle, nullptr);
  EXPECT_EQ(Said(), kNotFound);
  EXPECT_EQ(look.Owner(), MainWindowHandle);
  EXPECT_FALSE(look.OwnerWasUsable()) << "the main window waits for the answer";
  ::DestroyWindow(MainWindowHandle);
  MainWindowHandle = nullptr;
}

TEST_F(DeleteIniTest, ShowsItsMessageAlsoWithoutAMainWindow) {
  const BoxLook look;
  ASSERT_EQ(MainWindowHandle, nullptr);
  EXPECT_EQ(Said(), kNotFound);
  EXPECT_EQ(look.Owner(), nullptr);
}
