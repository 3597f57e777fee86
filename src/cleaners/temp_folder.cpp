#include "cleaners/temp_folder.h"

#include "platform/native_files.h"
#include "platform/path_text.h"
#include "platform/special_folder.h"
#include "platform/text_value.h"

namespace {

std::string Variable(const char* name) {
  char value[MAX_PATH * 2] = "";
  const DWORD length = ::GetEnvironmentVariableA(name, value, sizeof value);
  return length < sizeof value ? value : "";
}

// Full and in short names, so that two spellings of one folder compare equal. Empty for an empty path.
std::string Canonical(const std::string& path) {
  if (path.empty()) return {};
  char full[MAX_PATH];
  char* namePart = nullptr;
  const DWORD length = ::GetFullPathNameA(path.c_str(), sizeof full, full, &namePart);
  if (length == 0 || length >= sizeof full) return path;
  char shortened[MAX_PATH];
  const DWORD shortLength = ::GetShortPathNameA(full, shortened, sizeof shortened);
  return AppendBackslash(shortLength != 0 && shortLength < sizeof shortened ? shortened : full);
}

std::string WindowsFolder() {
  char folder[MAX_PATH] = "";
  ::GetWindowsDirectoryA(folder, sizeof folder);
  return folder;
}

std::string SystemFolder() {
  char folder[MAX_PATH] = "";
  ::GetSystemDirectoryA(folder, sizeof folder);
  return folder;
}

}  // namespace

std::string GetTempDir() {
  char folder[256] = "";
  const DWORD length = ::GetTempPathA(255, folder);
  return length < 255 ? folder : "";
}

TempFolderFacts FindTempFolderFacts() {
  TempFolderFacts facts;
  facts.configured = Variable("TMP");
  if (facts.configured.empty()) facts.configured = Variable("TEMP");
  facts.reported = AppendBackslash(GetTempDir());
  facts.canonical = Canonical(facts.reported);
  // Asked without the "\" behind it: with it some systems answer for the link's target.
  facts.isLink = IsLink(NativeAttributes(ToNativePath(facts.reported.substr(0, facts.reported.size() - 1))));
  const std::string folders[] = {
      WindowsFolder(),
      SystemFolder(),
      ProgramFolder(),
      Variable("USERPROFILE"),
      Variable("ProgramFiles"),
      FindSpecialFolder(kProfileFolder),
      FindSpecialFolder(kProgramFilesFolder),
      FindSpecialFolder(kDesktopFolder),
      FindSpecialFolder(kDocumentsFolder),
      FindSpecialFolder(kApplicationDataFolder),
      FindSpecialFolder(kLocalApplicationDataFolder),
  };
  for (const std::string& folder : folders) facts.keep.push_back(Canonical(folder));
  return facts;
}
