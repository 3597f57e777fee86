#include "cleaners/mdFHCCleaner.h"

#include <string>

#include "cleaners/CURLHistory.h"
#include "cleaners/value_sweep.h"
#include "platform/ErroHandle.h"
#include "platform/Reg32.h"
#include "platform/child_program.h"
#include "platform/handles.h"
#include "platform/key_tree.h"
#include "platform/main_window.h"
#include "platform/native_files.h"
#include "platform/plain_key.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "platform/stop_request.h"
#include "platform/system_functions.h"
#include "platform/told_of_files.h"
#include "platform/wide_system.h"

namespace cleaners {
using namespace platform;

namespace {

constexpr char kTypedUrlsKey[] = "Software\\Microsoft\\Internet Explorer\\TypedURLs";
constexpr char kRunKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\RunMRU";
constexpr char kIntelliFormsKey[] = "Software\\Microsoft\\Internet Explorer\\IntelliForms";

// Sweeps whether or not a stop is asked for: the sweep looks, the deletion of the key does not.
void ClearSweptKey(const char* path) {
  UniqueKey key;
  const LONG status = OpenPlainKey(HKEY_CURRENT_USER, path, kRegistryAccess, key);
  ++ClearedKeyCount;
  SweepValues(key.get(), status);
  key.reset();
  DeleteKeyTree(HKEY_CURRENT_USER, path);
}

}  // namespace

void SweepValues(HKEY key, LONG status) {
  for (DWORD index = 0; status == ERROR_SUCCESS; ++index) {
    if (StopErase) return;
    char name[256];
    DWORD length = 255;
    DWORD size = 0;
    status = ::RegEnumValueA(key, index, name, &length, nullptr, nullptr, nullptr, &size);
    if (status == ERROR_SUCCESS) status = ::RegDeleteValueA(key, name);
    if (status == ERROR_SUCCESS) TellErased(Trace::Value);
  }
}

void Command7() {
  reportAndLeave("mdFHCCLeaner,Command7", [] { ClearSweptKey(kTypedUrlsKey); });  // with a capital L, as reports have it
}

void ClearRunMRU() {
  reportAndLeave("mdFHCCleaner,ClearRunMRU", [] { ClearSweptKey(kRunKey); });
}

void cmdAutoComplte() {
  if (StopErase) return;
  reportAndLeave("mdFHCCleaner,cmdAutoComplte", [] {
    const Path companion = ProgramFolder() / Wide<"iea.exe">();
    // In quotes: of a path with blanks the shell would try every beginning. The working directory is the text "1", too; the
    // companion needs none.
    StartByShell(
        MainWindowHandle,
        {.verb = L"open", .what = L'"' + companion.Shown() + L'"', .arguments = L"1", .folder = L"1", .show = SW_HIDE});
    TellNotCounted();
  });
}

void ClearAutoCompletePasswords() {
  if (StopErase) return;
  ++ClearedKeyCount;
  quietly([] { DeleteKeyTree(HKEY_CURRENT_USER, kIntelliFormsKey); });
}

void ClearIEHistory() {
  if (StopErase) return;
  reportAndLeave("mdFHCCleaner,ClearIEHistory", [] {
    CURLHistory history;
    const std::int32_t before = history.Count();
    history.Clear();
    history.Refresh(L"", 0);
    if (before > history.Count()) TellErased(Trace::HistoryEntry, before - history.Count());
    for (const URLHistoryItem& item : history.NewEnum())
      TellStayed(valueOr(std::wstring(), [&] { return item.URL(); }), Why::LeftByWindows);
  });
}

}  // namespace cleaners
