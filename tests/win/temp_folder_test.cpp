// The cleaner of the temporary folder, with the variables that name it set to every place that is none. The canaries in
// those places come from temp_folder_prepare.py.
#include "cleaners/temp_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "cleaners/modCleaning.h"
#include "log_recorder.h"
#include "platform/native_files.h"
#include "platform/stop_request.h"
#include "platform/win32.h"

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

INSTANTIATE_TEST_SUITE_P(Names, TempFolder, testing::Values("wide", "ansi"), [](const auto& way) { return way.param; });

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
        std::string("C:\\Program Files\\some temp"), std::string("C:\\test\\temp")})
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
  for (const char* name : {"USERPROFILE", "ProgramFiles", "APPDATA", "SystemRoot", "windir"})
    ::SetEnvironmentVariableA(name, "C:\\good");
  for (const std::string& tmp : {profile, std::string("C:\\Program Files"), std::string("C:\\windows")}) ExpectRefused(tmp);
  ::SetEnvironmentVariableA("USERPROFILE", profile.c_str());
}

TEST_P(TempFolder, IsRefusedWhenItIsALink) {
  ExpectRefused("C:\\link");
  ExpectRefused("C:\\link\\");
}

TEST_P(TempFolder, IsRefusedWhenAnotherPathLeadsToAFolderToKeep) {
  // The guard compares the numbers of folders, which the ANSI way does not ask for. Windows 9x has no links, but it has
  // substituted drives: there one that leads to a folder to keep is not recognised.
  if (ByAnsi()) GTEST_SKIP() << "folders have no numbers this way";
  for (const char* tmp : {"C:\\to c\\users", "C:\\to c\\windows", "C:\\to c\\Program Files", "C:\\to c\\to c\\users",
                          "C:\\to c\\test", "C:\\to users\\quellix", "C:\\to users\\quellix\\Desktop",
                          "C:\\to profile\\AppData", "X:\\quellix", "X:\\quellix\\AppData\\Local"})
    ExpectRefused(tmp);
}

TEST_P(TempFolder, IsRefusedWhenTheDocumentsFolderIsALinkIntoIt) {
  // The guard compares the numbers of folders, which the ANSI way does not ask for. Windows 9x has no links, but it has
  // substituted drives: there one that leads to a folder to keep is not recognised.
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
