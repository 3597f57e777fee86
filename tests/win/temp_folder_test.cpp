// The cleaner of the temporary folder, with the variables that name it set to every place that is none. The canaries in
// those places come from temp_folder_prepare.py.
#include "cleaners/temp_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cstdlib>
#include <cstring>
#include <fstream>

#include "cleaners/modCleaning.h"
#include "import_hook.h"
#include "late_calls.h"
#include "log_recorder.h"
#include "platform/final_path.h"
#include "platform/native_files.h"
#include "platform/special_folder.h"
#include "platform/stop_request.h"
#include "platform/win32.h"
#include "ways_of_names.h"

using namespace cleaners;
using namespace platform;

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Names = std::vector<std::string>;

constexpr char kTemp[] = "C:\\good\\temp";

std::string Setting(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : std::string("the runner of this test sets no ") + name;
}

bool Exists(const std::string& path) { return ::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

Names MissingCanaries() {
  Names missing;
  std::ifstream list("C:\\canaries.txt");
  EXPECT_TRUE(list) << "nobody planted canaries";
  for (std::string path; std::getline(list, path);)
    if (!Exists(path)) missing.push_back(path);
  return missing;
}

void MakeFile(const std::string& path) {
  for (std::size_t end = path.find('\\', 3); end != std::string::npos; end = path.find('\\', end + 1))
    ::CreateDirectoryA(path.substr(0, end).c_str(), nullptr);
  const UniqueFile file(::CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  EXPECT_TRUE(file) << path << " cannot be made, system error " << ::GetLastError();
}

void FillTemp(const std::string& folder) {
  for (const char* name : {"\\trace.tmp", "\\~df1.tmp", "\\one\\trace.tmp", "\\one\\two\\three\\trace.tmp"})
    MakeFile(folder + name);
}

Names EntriesOf(const std::string& folder) {
  Names names;
  WIN32_FIND_DATAA found;
  const UniqueFind find(::FindFirstFileA((folder + "\\*").c_str(), &found));
  for (bool more = static_cast<bool>(find); more; more = ::FindNextFileA(find.get(), &found) != 0)
    if (found.cFileName != std::string(".") && found.cFileName != std::string("..")) names.push_back(found.cFileName);
  return names;
}

// Null takes the variable away.
void SetTemp(const char* tmp, const char* temp) {
  ::SetEnvironmentVariableA("TMP", tmp);
  ::SetEnvironmentVariableA("TEMP", temp);
}

// Variables of the process while one lives; null takes them away.
class OtherVariables {
 public:
  OtherVariables(const Names& names, const char* value) {
    for (const std::string& name : names) {
      const char* const text = std::getenv(name.c_str());
      before_.emplace_back(name, text != nullptr ? text : "");
      ::SetEnvironmentVariableA(name.c_str(), value);
    }
  }
  OtherVariables(const OtherVariables&) = delete;
  OtherVariables& operator=(const OtherVariables&) = delete;
  ~OtherVariables() {
    for (const auto& [name, text] : before_) ::SetEnvironmentVariableA(name.c_str(), text.empty() ? nullptr : text.c_str());
  }

 private:
  std::vector<std::pair<std::string, std::string>> before_;
};

// The folder that the program says it runs from; empty for the true one.
std::string programFile;
bool finalPathsAreTold = true;

DWORD WINAPI TellProgramFile(HMODULE module, LPWSTR path, DWORD size) {
  using Function = DWORD(WINAPI*)(HMODULE, LPWSTR, DWORD);
  static const auto trueOne = std::bit_cast<Function>(TrueFunction("kernel32.dll", "GetModuleFileNameW"));
  if (programFile.empty()) return trueOne(module, path, size);
  return static_cast<DWORD>(::MultiByteToWideChar(CP_ACP, 0, programFile.c_str(), -1, path, static_cast<int>(size))) - 1;
}

DWORD WINAPI TellProgramFileAnsi(HMODULE, LPSTR path, DWORD size) {
  ::lstrcpynA(path, programFile.c_str(), static_cast<int>(size));
  return static_cast<DWORD>(programFile.size());
}

// As on systems before Windows Vista, which cannot tell.
DWORD WINAPI TellFinalPath(HANDLE file, LPWSTR path, DWORD size, DWORD flags) {
  using Function = DWORD(WINAPI*)(HANDLE, LPWSTR, DWORD, DWORD);
  static const auto trueOne = std::bit_cast<Function>(TrueFunction("kernel32.dll", "GetFinalPathNameByHandleW"));
  return finalPathsAreTold ? trueOne(file, path, size, flags) : 0;
}

const bool replaced = (ReplaceFunction("GetModuleFileNameW", &TellProgramFile),
                       ReplaceFunction("GetFinalPathNameByHandleW", &TellFinalPath), true);

// What the system hands out about the folder "link"; Wine hands out nothing. The handle of a link is there that of its
// target.
std::wstring junctionTarget;

bool IsTheLink(HANDLE file) {
  wchar_t path[MAX_PATH] = L"";
  finalPathsAreTold = true;
  TellFinalPath(file, path, MAX_PATH, 0);
  finalPathsAreTold = false;
  return std::wstring(path).ends_with(L"\\good\\target");
}

BOOL WINAPI HandOutJunction(HANDLE file, DWORD, LPVOID, DWORD, LPVOID out, DWORD size, LPDWORD length, LPOVERLAPPED) {
  const auto bytes = static_cast<WORD>(2 * junctionTarget.size());
  const WORD header[] = {0x0003, 0xA000, static_cast<WORD>(bytes + 8), 0, 0, bytes, bytes, 0};
  *length = sizeof header + bytes;
  if (junctionTarget.empty() || size < *length || !IsTheLink(file)) return FALSE;
  std::memcpy(out, header, sizeof header);
  std::memcpy(static_cast<char*>(out) + sizeof header, junctionTarget.data(), bytes);
  return TRUE;
}

std::map<std::string, std::string> substituted;

DWORD WINAPI TellSubstitution(LPCSTR drive, LPSTR answer, DWORD size) {
  const auto found = substituted.find(drive);
  if (found == substituted.end()) return 0;
  ::lstrcpynA(answer, found->second.c_str(), static_cast<int>(size));
  return static_cast<DWORD>(found->second.size() + 2);
}

const LogLine kTerminated = {"Windows Temporary Files", "Terminated"};
const LogLine kCleared = {"Windows Temporary Files Cleared", "(stamp)"};
const LogLine kAborted = {"Windows Temporary Files **** aborted by user", "(stamp)"};

class TempFolder : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    AnsiNamesOnlyForTests = ByAnsi();
    StopErase = false;
    ::SetCurrentDirectoryA("C:\\current");
    FillTemp(kTemp);
    missing_ = MissingCanaries();
  }

  void TearDown() override {
    AnsiNamesOnlyForTests = false;
    StopErase = false;
    finalPathsAreTold = true;
    programFile.clear();
    junctionTarget.clear();
    substituted.clear();
    LogCleanResult = &RecordNothing;
    EXPECT_EQ(MissingCanaries(), missing_) << "canaries are gone";
  }

  bool ByAnsi() const { return GetParam() == std::string("ansi"); }
  static std::string Profile() { return Setting("USERPROFILE"); }

  // What the cleaner hands to the log last; the lines before tell of single folders.
  static LogLine Clear() {
    const LogRecorder log;
    ClearWindowsTemp();
    return log.Lines().empty() ? LogLine{"nothing was logged", ""} : log.Stamped().back();
  }

  static void ExpectRefused(const std::string& tmp) {
    SetTemp(tmp.c_str(), tmp.c_str());
    const LogRecorder log;
    ClearWindowsTemp();
    ASSERT_EQ(log.Stamped(), LogLines{kTerminated}) << "TMP=" << tmp;
  }

  static void ExpectCleaned(const std::string& folder, const std::string& tmp) {
    FillTemp(folder);
    SetTemp(tmp.c_str(), nullptr);
    EXPECT_EQ(Clear(), kCleared) << "TMP=" << tmp;
    EXPECT_THAT(EntriesOf(folder), IsEmpty()) << "TMP=" << tmp;
    EXPECT_TRUE(Exists(folder)) << "the folder itself stays";
  }

 private:
  Names missing_;
};

INSTANTIATE_TEST_SUITE_P(Names, TempFolder, testing::ValuesIn(WaysOfNames()), NameOfWay);

}  // namespace

TEST_P(TempFolder, IsEmptiedAndStays) {
  ExpectCleaned(kTemp, kTemp);
  ExpectCleaned(kTemp, std::string(kTemp) + "\\");
  ExpectCleaned(kTemp, "c:\\GOOD\\Temp");
}

TEST_P(TempFolder, IsTheOneThatTempNamesWhenTmpIsUnsetOrEmpty) {
  SetTemp(nullptr, kTemp);
  EXPECT_EQ(Clear(), kCleared);
  EXPECT_THAT(EntriesOf(kTemp), IsEmpty());
  FillTemp(kTemp);
  SetTemp("", kTemp);
  EXPECT_EQ(Clear(), kCleared);
  EXPECT_THAT(EntriesOf(kTemp), IsEmpty());
}

TEST_P(TempFolder, IsTheOneThatTmpNamesWhenBothAreSet) {
  SetTemp(kTemp, Profile().c_str());
  EXPECT_EQ(Clear(), kCleared);
  EXPECT_THAT(EntriesOf(kTemp), IsEmpty());
  FillTemp(kTemp);
  SetTemp(Profile().c_str(), kTemp);
  EXPECT_EQ(Clear(), kTerminated);
  EXPECT_FALSE(EntriesOf(kTemp).empty());
}

TEST_P(TempFolder, MayLieInsideTheWindowsProfileAndProgramFolders) {
  for (const std::string& folder :
       {std::string("C:\\windows\\temp"), Profile() + "\\AppData\\Local\\Temp", Profile() + "\\Temp",
        std::string("C:\\Program Files\\some\\Tmp"), std::string("C:\\test\\some temp")})
    ExpectCleaned(folder, folder);
}

TEST_P(TempFolder, MayBeNamedByItsShortName) {
  const std::string folder = "C:\\good\\a name with more than eight characters";
  FillTemp(folder);
  char shortName[MAX_PATH] = "";
  ASSERT_NE(::GetShortPathNameA(folder.c_str(), shortName, sizeof shortName), 0u);
  ASSERT_NE(shortName, folder);
  ExpectCleaned(folder, shortName);
}

TEST_P(TempFolder, MayLieOnAShare) { ExpectCleaned("\\\\server\\share\\temp", "\\\\server\\share\\temp"); }

TEST_P(TempFolder, MayBeReachedThroughALinkOnTheWay) { ExpectCleaned("C:\\elsewhere\\temp", "C:\\to elsewhere\\temp"); }

TEST_P(TempFolder, MayHaveAPathThatFillsTheBuffer) {
  SetTemp(Setting("QUELLIX_TEST_FITTING").c_str(), nullptr);
  EXPECT_EQ(Clear(), kCleared);
}

TEST_P(TempFolder, IsRefusedWhenNoVariableNamesIt) {
  for (const char* nothing : {static_cast<const char*>(nullptr), ""}) {
    SetTemp(nothing, nothing);
    EXPECT_EQ(Clear(), kTerminated);
  }
  ::SetEnvironmentVariableA("USERPROFILE", nullptr);
  EXPECT_EQ(Clear(), kTerminated) << "Windows falls back to its own folder";
  ::SetEnvironmentVariableA("USERPROFILE", Profile().c_str());
}

TEST_P(TempFolder, IsRefusedWhenThePathIsNoFullOne) {
  for (const char* tmp : {" ",
                          "temp",
                          "temp\\",
                          ".\\temp",
                          ".",
                          "..",
                          "...",
                          "\\",
                          "/",
                          "\\current\\temp",
                          "C:",
                          "C:temp",
                          "c:.",
                          "\"C:\\current\\temp\"",
                          "\"\"",
                          "%TEMP%",
                          "\\\\?\\C:\\current",
                          "\\\\.\\C:\\current",
                          "\\??\\C:\\current",
                          "file:///C:/current",
                          "C:/current",
                          "C:\\current\\*",
                          "C:\\curr?nt",
                          "|"})
    ExpectRefused(tmp);
}

TEST_P(TempFolder, IsRefusedWhenItIsARoot) {
  for (const char* tmp : {"C:\\", "c:\\", "C:\\\\", "C:\\.", "C:\\current\\..", "C:\\x\\..\\", "X:\\", "\\\\server\\share",
                          "\\\\server\\share\\", "\\\\server\\share\\temp\\..", "\\\\server", "\\\\server\\", "\\\\"})
    ExpectRefused(tmp);
}

TEST_P(TempFolder, IsRefusedWhenItIsTheWindowsFolder) {
  for (const char* tmp : {"C:\\windows",
                          "c:\\windows",
                          "C:\\WINDOWS",
                          "C:\\WINDOWS\\",
                          "c:\\Windows\\",
                          "C:\\windows.",
                          "C:\\windows ",
                          " C:\\windows",
                          "C:\\windows\\.",
                          "C:\\windows\\temp\\..",
                          "C:\\.\\windows",
                          "C:/windows",
                          "C:\\windows/",
                          "C:\\windows\\\\",
                          "C:\\\\windows",
                          "C:\\WINNT",
                          "c:\\winnt\\",
                          "C:\\windows\\system32",
                          "c:\\WINDOWS\\SYSTEM32\\",
                          "C:\\windows\\system32\\drivers\\.."})
    ExpectRefused(tmp);
}

TEST_P(TempFolder, IsRefusedWhenItIsOrHoldsAFolderOfTheUser) {
  const std::string users = Profile().substr(0, Profile().rfind('\\'));
  std::string upper = Profile();
  ::CharUpperA(upper.data());
  for (const std::string& tmp :
       {Profile(), upper, Profile() + "\\", users, users + "\\", Profile() + "\\Desktop", Profile() + "\\DESKTOP\\",
        Profile() + "\\Documents", Profile() + "\\Documents\\", Profile() + "\\AppData", Profile() + "\\AppData\\Roaming",
        Profile() + "\\AppData\\Local", Profile() + "\\AppData\\Local\\..", Profile() + "\\Desktop\\..\\..\\" + "quellix"})
    ExpectRefused(tmp);
}

TEST_P(TempFolder, IsRefusedWhenItIsOrHoldsAProgramFolder) {
  char shortName[MAX_PATH] = "";
  ASSERT_NE(::GetShortPathNameA("C:\\Program Files", shortName, sizeof shortName), 0u);
  ASSERT_STRNE(shortName, "C:\\Program Files");
  for (const std::string& tmp :
       {std::string("C:\\Program Files"), std::string("c:\\PROGRAM FILES\\"), std::string(shortName),
        std::string(shortName) + "\\", std::string("C:\\test"), std::string("c:\\TEST\\")})
    ExpectRefused(tmp);
}

TEST_P(TempFolder, IsRefusedForTheProfileAndProgramsAlsoWhenTheirVariablesSayOtherwise) {
  const std::string profile = Profile();
  const OtherVariables other({"USERPROFILE", "ProgramFiles", "APPDATA", "SystemRoot", "windir"}, "C:\\good");
  for (const std::string& tmp : {profile, std::string("C:\\Program Files"), std::string("C:\\windows")}) ExpectRefused(tmp);
}

TEST_P(TempFolder, IsCleanedAtItsTargetWhenItIsALink) {
  for (const char* link : {"C:\\link", "C:\\link\\", "C:\\link to a link"}) {
    if (ByAnsi()) {
      ExpectRefused(link);  // Windows 9x has none
    } else {
      ExpectCleaned("C:\\good\\target", link);
    }
  }
}

TEST_P(TempFolder, IsJudgedAtItsTargetWhenItIsALink) {
  for (const char* link :
       {"C:\\to c", "C:\\to users", "C:\\to profile", "C:\\link to fonts", "C:\\link to the profile", "C:\\link to all"})
    ExpectRefused(link);
  if (!ByAnsi()) ExpectCleaned("C:\\windows\\temp", "C:\\link to windows temp");
}

TEST_P(TempFolder, IsFollowedByHandWhereTheSystemDoesNot) {
  if (ByAnsi()) GTEST_SKIP() << "Windows 9x has no links";
  finalPathsAreTold = false;
  const ImportHook hook(importedDeviceIoControl, &HandOutJunction);
  ExpectRefused("C:\\link");  // as long as it cannot be read
  ExpectRefused("C:\\to elsewhere\\temp");
  junctionTarget = L"\\??\\C:\\good\\target";
  ExpectCleaned("C:\\good\\target", "C:\\link");
  ExpectCleaned("C:\\good\\target\\temp", "C:\\link\\temp");
  junctionTarget = L"\\??\\C:\\windows\\Fonts";
  ExpectRefused("C:\\link");
  junctionTarget = L"\\??\\C:\\";
  ExpectRefused("C:\\link");
  junctionTarget = L"\\??\\C:\\link";
  ExpectRefused("C:\\link");
}

TEST_P(TempFolder, IsJudgedWhereASubstitutedDriveOfWindows9xLeads) {
  if (!ByAnsi()) GTEST_SKIP() << "the NT family compares the numbers of folders";
  const ImportHook hook(importedQueryDosDeviceA, &TellSubstitution);
  substituted["X:"] = "C:\\users";
  for (const char* tmp : {"X:\\", "X:\\quellix", "X:\\quellix\\Desktop", "X:\\Public\\of all"}) ExpectRefused(tmp);
  substituted["X:"] = "C:\\windows";
  for (const char* tmp : {"X:\\", "X:\\system32", "X:\\Fonts"}) ExpectRefused(tmp);
  ExpectCleaned("C:\\windows\\temp", "X:\\temp");
}

TEST_P(TempFolder, IsRefusedInsideTheFoldersOfAllUsersUnlessItIsCalledTemp) {
  for (const char* tmp :
       {"C:\\windows\\system32\\drivers", "c:\\WINDOWS\\Fonts\\", "C:\\windows\\system32\\of a user",
        "C:\\Program Files\\some temp", "C:\\Program Files\\Common Files", "C:\\Program Files\\Common Files\\System",
        "C:\\ProgramData\\of all", "C:\\users\\Public", "C:\\users\\Public\\of all", "C:\\windows\\Sysnative"})
    ExpectRefused(tmp);
  if (!ByAnsi()) ExpectRefused("C:\\to c\\windows\\Fonts");
}

TEST_P(TempFolder, IsRefusedThereAlsoWhenTheVariablesSayOtherwise) {
  const OtherVariables none({"ProgramFiles", "CommonProgramFiles", "ProgramData", "ALLUSERSPROFILE", "PUBLIC", "windir",
                             "SystemRoot", "USERPROFILE"},
                            nullptr);
  for (const char* tmp : {"C:\\windows\\Fonts", "C:\\Program Files\\Common Files\\System", "C:\\ProgramData\\of all"})
    ExpectRefused(tmp);
}

TEST_P(TempFolder, IsRefusedForProgramFoldersThatOnlyA64BitSystemTells) {
  for (const char* name : {"ProgramW6432", "ProgramFiles(x86)", "CommonProgramW6432"}) {
    const OtherVariables other({name}, "C:\\elsewhere");
    ExpectRefused("C:\\elsewhere");
    ExpectRefused("C:\\elsewhere\\canary folder");
  }
}

TEST_P(TempFolder, IsRefusedWhenItIsAFolderOfTheShell) {
  for (const int identifier :
       {kProgramsFolder, kDocumentsFolder, kFavoritesFolder, kStartMenuFolder, kDesktopFolder, kTemplatesFolder,
        kAllStartMenuFolder, kAllProgramsFolder, kAllDesktopFolder, kAllTemplatesFolder, kAllDocumentsFolder}) {
    const std::string folder = Narrow(FindSpecialFolder(identifier).Shown());
    if (folder.empty()) continue;  // older systems lack some
    MakeFile(folder + "\\canary.txt");
    ExpectRefused(folder);
    EXPECT_TRUE(Exists(folder + "\\canary.txt")) << folder;
  }
}

TEST_P(TempFolder, KeepsTheProgramsOwnFolderWhereItLiesInside) {
  const ImportHook hook(importedGetModuleFileNameA, &TellProgramFileAnsi);
  programFile = "C:\\good\\temp\\one\\own folder\\quellix.exe";
  const std::string own = "C:\\good\\temp\\one\\own folder";
  for (const std::string& file : {programFile, own + "\\data\\list.txt", std::string("C:\\good\\temp\\one\\own\\trace.tmp")})
    MakeFile(file);
  SetTemp(kTemp, nullptr);
  EXPECT_EQ(Clear(), kCleared);
  EXPECT_TRUE(Exists(programFile) && Exists(own + "\\data\\list.txt"));
  EXPECT_THAT(EntriesOf(kTemp), ElementsAre("one"));
  EXPECT_THAT(EntriesOf("C:\\good\\temp\\one"), ElementsAre("own folder"));
  ExpectRefused(own);
  EXPECT_TRUE(Exists(programFile));
  programFile.clear();
  ExpectCleaned(kTemp, kTemp);
}

TEST_P(TempFolder, IsRefusedWhenAnotherPathLeadsToAFolderToKeep) {
  // The guard compares the numbers of folders, which the ANSI way does not ask for: Windows 9x has no links.
  if (ByAnsi()) GTEST_SKIP() << "folders have no numbers this way";
  for (const char* tmp : {"C:\\to c\\users", "C:\\to c\\windows", "C:\\to c\\Program Files", "C:\\to c\\to c\\users",
                          "C:\\to c\\test", "C:\\to users\\quellix", "C:\\to users\\quellix\\Desktop",
                          "C:\\to profile\\AppData", "X:\\quellix", "X:\\quellix\\AppData\\Local"})
    ExpectRefused(tmp);
}

TEST_P(TempFolder, IsRefusedWhenTheDocumentsFolderIsALinkIntoIt) {
  // The guard compares the numbers of folders, which the ANSI way does not ask for: Windows 9x has no links.
  if (ByAnsi()) GTEST_SKIP() << "folders have no numbers this way";
  ExpectRefused("C:\\data\\docs");
  ExpectRefused("C:\\data");
}

TEST_P(TempFolder, IsRefusedWhenItsPathIsTooLong) {
  ExpectRefused(Setting("QUELLIX_TEST_TOO_LONG"));
  ExpectRefused("C:\\" + std::string(300, 'x') + "\\..\\current");
  ExpectRefused("C:\\" + std::string(3000, 'x'));
}

TEST_P(TempFolder, NeedNotExist) {
  SetTemp("C:\\good\\missing\\temp", nullptr);
  EXPECT_EQ(Clear(), kCleared);
  EXPECT_FALSE(Exists("C:\\good\\missing"));
}

TEST_P(TempFolder, IsLeftAloneWhenTheStopCameBefore) {
  SetTemp(kTemp, nullptr);
  const Names before = EntriesOf(kTemp);
  StopErase = true;
  EXPECT_EQ(Clear(), kAborted);
  EXPECT_EQ(EntriesOf(kTemp), before);
}

TEST_P(TempFolder, KeepsWhatIsLeftWhenTheStopComesMidway) {
  static LogLine last;
  SetTemp(kTemp, nullptr);
  MakeFile(std::string(kTemp) + "\\zz\\trace.tmp");
  LogCleanResult = [](WideView text1, WideView text2) {
    StopErase = true;
    last = {Narrow(text1), text2.find(L" @ ") != WideView::npos ? "(stamp)" : Narrow(text2)};
  };
  ClearWindowsTemp();
  EXPECT_EQ(last, kAborted);
  EXPECT_TRUE(Exists(std::string(kTemp) + "\\zz\\trace.tmp"));
  EXPECT_FALSE(Exists(std::string(kTemp) + "\\one\\two\\three\\trace.tmp"));
}

TEST(GetTempDir, IsWhatTheSystemReportsAndEmptyWhenThatIsTooLong) {
  SetTemp(kTemp, nullptr);
  EXPECT_EQ(GetTempDir(), Widen(kTemp) + L"\\");
  SetTemp(Setting("QUELLIX_TEST_TOO_LONG").c_str(), nullptr);
  EXPECT_EQ(GetTempDir(), L"");
}
