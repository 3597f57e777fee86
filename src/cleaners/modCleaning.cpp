#include "cleaners/modCleaning.h"

#include "cleaners/clean_log.h"
#include "cleaners/temp_clearing.h"
#include "cleaners/temp_folder.h"
#include "cleaners/temp_guard.h"
#include "cleaners/wipe_file.h"
#include "cleaners/wipe_state.h"
#include "platform/ErroHandle.h"
#include "platform/Reg32.h"
#include "platform/handles.h"
#include "platform/key_tree.h"
#include "platform/path.h"
#include "platform/plain_key.h"
#include "platform/runtime_error.h"
#include "platform/stop_request.h"
#include "platform/told_of_files.h"
#include "platform/wide_text.h"

namespace cleaners {
using namespace platform;

namespace {

constexpr char kFindFilesKey[] = "Software\\Microsoft\\Windows\\Currentversion\\Explorer\\Doc Find Spec MRU";
constexpr char kFindBarKey[] =
    "Software\\Microsoft\\Internet Explorer\\Explorer Bars\\{C4EE31F3-4768-11D2-BE5C-00A0C9A83DA1}\\FilesNamedMRU";

// The key that ClearFind leaves open when it returns; the next opening closes it.
UniqueKey findKey;

// Index 0 is read every time: each deletion moves the remaining values down.
void DeleteValuesFromTheFront(HKEY key, LONG status) {
  while (status == ERROR_SUCCESS && !StopErase) {
    char name[255];
    DWORD length = sizeof name;
    status = ::RegEnumValueA(key, 0, name, &length, nullptr, nullptr, nullptr, nullptr);
    if (status == ERROR_SUCCESS) status = ::RegDeleteValueA(key, name);
    if (status == ERROR_SUCCESS) TellErased(Trace::Value);
  }
}

void ClearFindKey(const char* path) {
  findKey.reset();
  const LONG status = OpenPlainKey(HKEY_CURRENT_USER, path, kRegistryAccess, findKey);
  ++CleanedKeyCount;
  DeleteValuesFromTheFront(findKey.get(), status);
  DeleteKeyTree(HKEY_CURRENT_USER, path);
}

}  // namespace

void ClearWindowsTemp() {
  resumeNext([] {
    const TempFolderFacts facts = FindTempFolderFacts();
    if (const Why refusal = RefusalOfTempFolder(facts); refusal != Why::Gone) {
      TellStayed(facts.reported, refusal);
      LogCleanResult(Wide<"Windows Temporary Files">(), Wide<"Terminated">());
      return;
    }
    ClearTempFolder(facts.folder);
    LogCleanResult(
        StopErase ? Wide<"Windows Temporary Files **** aborted by user">() : Wide<"Windows Temporary Files Cleared">(),
        ResultStamp());
  });
}

void ClearScanDiskFiles() {
  resumeNext([] { WipeMatchingFiles(Wide<"C:\\*.chk">()); });
  resumeNext([] { WipeMatchingFiles(Wide<"D:\\*.chk">()); });
  resumeNext([] {
    LogCleanResult(StopErase ? Wide<"Scan Disk Files **** aborted by user">() : Wide<"Scan Disk Files">(), ResultStamp());
  });
}

void ClearFind() {
  reportAndLeave("modCleaning,ClearFind", [] {
    ClearFindKey(kFindFilesKey);
    ClearFindKey(kFindBarKey);  // also after a stop within the first key, then without its value loop
    if (StopErase)
      LogCleanResult(Wide<"Find File List">(), Wide<"**Aborted**">());
    else
      LogCleanResult(Wide<"Find File List Cleared">(), ResultStamp());
  });
}

void ClearRegistryStreams() {
  resumeNext([] { DeleteKeyTree(HKEY_CURRENT_USER, "Software\\Microsoft\\Windows\\CurrentVersion\\StreamMRU"); });
  // The system reads this value under the machine's hive; under the current user's it changes nothing, and needs no right
  // that a limited user lacks.
  resumeNext([] {
    SaveKeyValue(HKEY_CURRENT_USER, "SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Memory Management",
                 "ClearPageFileAtShutdown", "0", REG_SZ);
  });
  resumeNext([] { LogCleanResult(Wide<"Registry Streams Cleared">(), ResultStamp()); });
}

}  // namespace cleaners
