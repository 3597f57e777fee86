// The deletion of a key with its subkeys, on a Windows without the shell's function for it. The functions that the program
// looks up pass through the test, which lets some of them fail.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "platform/handles.h"
#include "platform/key_tree.h"
#include "platform/late_binding.h"

using namespace platform;

namespace {

std::function<LONG(const wchar_t*)> atOpen;  // its answer; ERROR_SUCCESS lets the key be opened
std::function<void(HKEY)> atEnumeration;

LONG WINAPI Open(HKEY parent, LPCWSTR name, DWORD options, REGSAM access, HKEY* opened) {
  const LONG refused = atOpen ? atOpen(name) : ERROR_SUCCESS;
  return refused != ERROR_SUCCESS ? refused : ::RegOpenKeyExW(parent, name, options, access, opened);
}

LONG WINAPI Enumerate(HKEY key, DWORD index, LPWSTR name, DWORD* length, DWORD*, LPWSTR, DWORD*, FILETIME*) {
  if (atEnumeration) atEnumeration(key);
  return ::RegEnumKeyExW(key, index, name, length, nullptr, nullptr, nullptr, nullptr);
}

}  // namespace

namespace platform {

FARPROC FindSystemFunction(const char* dll, const char* name) {
  const std::string asked = name;
  if (asked == "SHDeleteKeyA") return nullptr;
  if (asked == "RegOpenKeyExW") return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&Open));
  if (asked == "RegEnumKeyExW") return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&Enumerate));
  return ::GetProcAddress(::GetModuleHandleA(dll), name);
}

bool IsSystemDllPresent(const char*) { return true; }

}  // namespace platform

namespace {

constexpr char kBase[] = "Software\\QuellixKeyTree";
constexpr char kTree[] = "Software\\QuellixKeyTree\\tree";
constexpr char kBeside[] = "Software\\QuellixKeyTree\\tree2";
constexpr char kTarget[] = "Software\\QuellixKeyTreeTarget";  // of links, below the machine's root
constexpr wchar_t kTargetPath[] = L"\\Registry\\Machine\\Software\\QuellixKeyTreeTarget";

UniqueKey Create(HKEY parent, const std::wstring& name, DWORD options = 0) {
  HKEY key = nullptr;
  ::RegCreateKeyExW(parent, name.c_str(), 0, nullptr, options, KEY_ALL_ACCESS | KEY_CREATE_LINK, nullptr, &key, nullptr);
  EXPECT_NE(key, nullptr);
  return UniqueKey(key);
}

UniqueKey Create(const std::string& path, HKEY root = HKEY_CURRENT_USER) {
  return Create(root, std::wstring(path.begin(), path.end()));
}

bool Exists(const std::string& path, HKEY root = HKEY_CURRENT_USER) {
  HKEY key = nullptr;
  const bool there = ::RegOpenKeyExA(root, path.c_str(), REG_OPTION_OPEN_LINK, KEY_READ, &key) == ERROR_SUCCESS;
  const UniqueKey close(key);
  return there;
}

// Without the program's help, by a function of later systems.
void Remove(HKEY root, const char* path) {
  using DeleteTree = LONG WINAPI(HKEY, LPCSTR);
  void* const found = reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("advapi32.dll"), "RegDeleteTreeA"));
  reinterpret_cast<DeleteTree*>(found)(root, path);
}

void CreateLinkToTarget(HKEY parent, const std::wstring& name) {
  const UniqueKey link = Create(parent, name, REG_OPTION_CREATE_LINK);
  ASSERT_EQ(::RegSetValueExW(link.get(), L"SymbolicLinkValue", 0, REG_LINK, reinterpret_cast<const BYTE*>(kTargetPath),
                             sizeof kTargetPath - sizeof(wchar_t)),
            ERROR_SUCCESS);
}

class KeyTree : public testing::Test {
 protected:
  void SetUp() override {
    Create(kTree), Create(kBeside);
    Create(std::string(kTarget) + "\\below", HKEY_LOCAL_MACHINE);
  }
  void TearDown() override {
    atOpen = nullptr, atEnumeration = nullptr;
    Remove(HKEY_CURRENT_USER, kBase);
    Remove(HKEY_LOCAL_MACHINE, kTarget);
  }

  LONG Delete() const { return DeleteKeyTree(HKEY_CURRENT_USER, kTree); }
  bool IsTargetWhole() const { return Exists(std::string(kTarget) + "\\below", HKEY_LOCAL_MACHINE); }
};

}  // namespace

TEST_F(KeyTree, GoesWithEverythingBelowAndNothingBeside) {
  for (const wchar_t* name : {L"one", L"two\\three", L"two\\four\\five", L"\x0416\x8868", L"???", L"* a.b"})
    ::RegSetValueExA(Create(Create(kTree).get(), name).get(), "value", 0, REG_SZ, reinterpret_cast<const BYTE*>("text"), 5);
  EXPECT_EQ(Delete(), ERROR_SUCCESS);
  EXPECT_FALSE(Exists(kTree));
  EXPECT_TRUE(Exists(kBeside));
}

TEST_F(KeyTree, OfHundredsOfLevelsGoes) {
  UniqueKey deepest = Create(kTree);
  for (int level = 0; level < 400; ++level) deepest = Create(deepest.get(), L"deeper");
  deepest.reset();
  EXPECT_EQ(Delete(), ERROR_SUCCESS);
  EXPECT_FALSE(Exists(kTree));
}

TEST_F(KeyTree, OfThousandsOfKeysGoes) {
  const UniqueKey tree = Create(kTree);
  for (int number = 0; number < 3000; ++number) Create(tree.get(), std::to_wstring(number));
  EXPECT_EQ(Delete(), ERROR_SUCCESS);
  EXPECT_FALSE(Exists(kTree));
}

TEST_F(KeyTree, LosesALinkAndNotWhatItLeadsTo) {
  CreateLinkToTarget(Create(kTree).get(), L"link");
  EXPECT_EQ(Delete(), ERROR_SUCCESS);
  EXPECT_FALSE(Exists(kTree));
  EXPECT_TRUE(IsTargetWhole());
}

TEST_F(KeyTree, ThatIsALinkItselfGoesAsOne) {
  ::RegDeleteKeyA(HKEY_CURRENT_USER, kTree);
  CreateLinkToTarget(Create(kBase).get(), L"tree");
  EXPECT_EQ(Delete(), ERROR_SUCCESS);
  EXPECT_FALSE(Exists(kTree));
  EXPECT_TRUE(IsTargetWhole());
}

// A link on the way belongs to whoever planted it; what it leads to is none of the tree's.
TEST_F(KeyTree, IsNotReachedThroughALink) {
  CreateLinkToTarget(Create(kBase).get(), L"link");
  EXPECT_EQ(DeleteKeyTree(HKEY_CURRENT_USER, "Software\\QuellixKeyTree\\link\\below"), ERROR_CANT_RESOLVE_FILENAME);
  EXPECT_TRUE(IsTargetWhole());
}

TEST_F(KeyTree, KeepsWhatCannotBeOpenedAndTheKeysAboveItOnly) {
  for (const wchar_t* name : {L"a\\b", L"m\\locked\\below", L"m\\n", L"z"}) Create(Create(kTree).get(), name);
  atOpen = [](const std::wstring& name) { return name == L"locked" ? ERROR_ACCESS_DENIED : ERROR_SUCCESS; };
  EXPECT_EQ(Delete(), ERROR_ACCESS_DENIED);
  EXPECT_TRUE(Exists(std::string(kTree) + "\\m\\locked\\below"));
  for (const char* gone : {"\\a", "\\m\\n", "\\z"}) EXPECT_FALSE(Exists(kTree + std::string(gone))) << gone;
}

TEST_F(KeyTree, EndsAlthoughSomebodyAddsAKeyForEachThatGoes) {
  for (int number = 0; number < 50; ++number) Create(Create(kTree).get(), std::to_wstring(number));
  int added = 0;
  atEnumeration = [&added](HKEY key) { Create(key, L"new" + std::to_wstring(added++)); };
  EXPECT_NE(Delete(), ERROR_SUCCESS);
  EXPECT_GE(added, 50);
  atEnumeration = nullptr;
  EXPECT_EQ(Delete(), ERROR_SUCCESS);
  EXPECT_FALSE(Exists(kTree));
}

TEST_F(KeyTree, ThatIsNotThereIsAFailure) {
  EXPECT_EQ(DeleteKeyTree(HKEY_CURRENT_USER, "Software\\QuellixKeyTree\\none"), ERROR_FILE_NOT_FOUND);
}

TEST_F(KeyTree, WithoutANameIsRefused) {
  HKEY opened = nullptr;
  ASSERT_EQ(::RegOpenKeyA(HKEY_CURRENT_USER, kBase, &opened), ERROR_SUCCESS);
  const UniqueKey base(opened);
  EXPECT_EQ(DeleteKeyTree(base.get(), ""), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(DeleteKeyTree(base.get(), nullptr), ERROR_INVALID_PARAMETER);
  EXPECT_TRUE(Exists(kTree));
}

// As Windows 9x answers, whose RegDeleteKey takes the subkeys along.
TEST_F(KeyTree, IsLeftToThePlainFunctionWhereThereAreNoWideOnes) {
  atOpen = [](const wchar_t*) { return ERROR_CALL_NOT_IMPLEMENTED; };
  EXPECT_EQ(Delete(), ERROR_SUCCESS);
  EXPECT_FALSE(Exists(kTree));
  EXPECT_TRUE(Exists(kBeside));
}
