#include "platform/late_binding.h"

#include <gtest/gtest.h>

#include "platform/system_functions.h"
#include "scratch_folder.h"

using namespace platform;

namespace {

using Function = LateFunction<DWORD(WINAPI*)()>;

// A DLL that can be loaded and that the system folder does not hold.
constexpr char kPlanted[] = "quellix_planted.dll";

std::string SystemFolder() {
  char folder[MAX_PATH] = "";
  ::GetSystemDirectoryA(folder, sizeof folder);
  return folder;
}

void Plant(const std::string& path) { ::CopyFileA((SystemFolder() + "\\version.dll").c_str(), path.c_str(), FALSE); }

// Loading by the bare name, as a careless program does; proves that the planted DLL is one that would be taken.
bool BareNameLoads() {
  const HMODULE module = ::LoadLibraryA(kPlanted);
  if (module != nullptr) ::FreeLibrary(module);
  return module != nullptr;
}

std::string FileOf(FARPROC function) {
  HMODULE module = nullptr;
  MEMORY_BASIC_INFORMATION region{};
  ::VirtualQuery(reinterpret_cast<void*>(function), &region, sizeof region);
  module = static_cast<HMODULE>(region.AllocationBase);
  char path[MAX_PATH] = "";
  ::GetModuleFileNameA(module, path, sizeof path);
  return path;
}

int CallRaises(const Function& function) {
  try {
    function();
  } catch (const RuntimeError& error) {
    return error.number;
  }
  return 0;
}

}  // namespace

TEST(LateBinding, CallsAFunctionThatIsThere) {
  const LateFunction<DWORD(WINAPI*)()> processId{"kernel32.dll", "GetCurrentProcessId"};
  EXPECT_TRUE(processId);
  EXPECT_EQ(processId(), ::GetCurrentProcessId());
}

TEST(LateBinding, HandsArgumentsAndResultThrough) {
  const LateFunction<int(WINAPI*)(int, int, int)> multiply{"kernel32.dll", "MulDiv"};
  EXPECT_EQ(multiply(6, 7, 2), 21);
}

TEST(LateBinding, RaisesTheErrorOfAMissingDll) {
  const Function function{"quellix_none.dll", "Anything"};
  EXPECT_EQ(CallRaises(function), 48);
  EXPECT_EQ(CallRaises(function), 48) << "each time";
}

TEST(LateBinding, RaisesTheErrorOfAMissingFunction) {
  const Function function{"kernel32.dll", "QuellixHasNoSuchFunction"};
  EXPECT_EQ(CallRaises(function), 453);
  EXPECT_EQ(CallRaises(function), 453) << "each time";
}

TEST(LateBinding, LeavesTheDescriptionOfTheClassicListPending) {
  Err.Clear();
  resumeNext([] { Function("quellix_none.dll", "Anything")(); });
  EXPECT_EQ(Err.Description(), "Error in loading DLL");
  resumeNext([] { Function("kernel32.dll", "QuellixHasNoSuchFunction")(); });
  EXPECT_EQ(Err.Description(), "Specified DLL function not found");
  Err.Clear();
}

TEST(LateBinding, TellsWhetherAFunctionIsThere) {
  EXPECT_TRUE(Function("kernel32.dll", "GetTickCount"));
  EXPECT_FALSE(Function("kernel32.dll", "gettickcount")) << "case counts in a function's name";
  EXPECT_FALSE(Function("kernel32.dll", ""));
  EXPECT_FALSE(Function("quellix_none.dll", "GetTickCount"));
  EXPECT_FALSE(Function("", "GetTickCount"));
}

TEST(LateBinding, TellsWhetherADllIsThere) {
  EXPECT_TRUE(IsSystemDllPresent("kernel32.dll"));
  EXPECT_TRUE(IsSystemDllPresent("SHLWAPI.DLL"));
  EXPECT_FALSE(IsSystemDllPresent("quellix_none.dll"));
}

TEST(LateBinding, DoesNotLoadADllBesideTheProgram) {
  const std::string planted = std::string("C:\\test\\") + kPlanted;
  Plant(planted);
  EXPECT_TRUE(BareNameLoads());
  ASSERT_FALSE(IsSystemDllPresent(kPlanted));
  EXPECT_EQ(FindSystemFunction(kPlanted, "GetFileVersionInfoA"), nullptr);
  EXPECT_EQ(CallRaises(Function(kPlanted, "GetFileVersionInfoA")), 48);
  ::DeleteFileA(planted.c_str());
}

TEST(LateBinding, DoesNotLoadADllOfTheCurrentFolderOrThePath) {
  const ScratchFolder folder;
  Plant(folder / kPlanted);
  ::SetCurrentDirectoryA(folder.Path().c_str());
  ::SetEnvironmentVariableA("PATH", folder.Path().c_str());
  EXPECT_TRUE(BareNameLoads());
  ASSERT_FALSE(IsSystemDllPresent(kPlanted));
  EXPECT_EQ(CallRaises(Function(kPlanted, "GetFileVersionInfoA")), 48);
  ::SetCurrentDirectoryA("C:\\test");
}

TEST(LateBinding, TakesADllOfTheSystemFolderFromThere) {
  Plant("C:\\test\\wintrust.dll");
  const std::string file = FileOf(FindSystemFunction("wintrust.dll", "WinVerifyTrust"));
  EXPECT_EQ(_stricmp(file.c_str(), (SystemFolder() + "\\wintrust.dll").c_str()), 0) << file;
  ::DeleteFileA("C:\\test\\wintrust.dll");
}

TEST(LateBinding, FindsEveryFunctionOfItsTableThatThisSystemHas) {
  EXPECT_TRUE(late::SHDeleteKey);
  EXPECT_TRUE(late::SHEmptyRecycleBin);
  EXPECT_TRUE(late::InternetOpen);
  EXPECT_TRUE(late::InternetOpenUrl);
  EXPECT_TRUE(late::InternetCloseHandle);
  EXPECT_TRUE(late::DeleteFileWide);
}
