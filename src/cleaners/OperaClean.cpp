#include "cleaners/OperaClean.h"

#include "cleaners/locked_files.h"
#include "platform/ErroHandle.h"
#include "platform/Reg32.h"
#include "platform/message_pump.h"
#include "platform/open_folder.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "platform/stop_request.h"
#include "platform/told_of_files.h"
#include "platform/whole_file.h"
#include "platform/wide_system.h"

namespace cleaners {
using namespace platform;

namespace {

constexpr char kOperaKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Opera.exe";

// What a plain listing passes over, and with it the cleaners, and links.
constexpr DWORD kNotPlain = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                            FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_REPARSE_POINT;

bool IsPlainFile(DWORD attributes) { return attributes != INVALID_FILE_ATTRIBUTES && (attributes & kNotPlain) == 0; }

void WipeQuietly(const Path& path) {
  quietly([&] {
    const DWORD attributes = NativeAttributes(path);
    if (IsPlainFile(attributes)) {
      const std::uint64_t length = valueOr(std::uint64_t{0}, [&] { return FileLen(path); });
      Told(TryWhileLocked([&] { return NativeDeleteFile(path); }), Trace::File, path, length);
    } else if (attributes != INVALID_FILE_ATTRIBUTES) {
      TellStayed(path, Why::NotPlain);
    }
  });
}

// The plain files directly inside the folder. One that is hidden, of the system or a link is left alone.
void ClearFolder(const Path& folder) {
  quietly([&] {
    const DWORD attributes = NativeAttributes(folder);
    if ((attributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM)) != 0) {
      if (attributes != INVALID_FILE_ATTRIBUTES) TellStayed(folder, Why::NotPlain);
      return;
    }
    OpenFolder opened(folder);
    if (!opened) Told(false, Trace::Folder, folder);
    for (FolderEntry entry; !StopErase && opened.IsStillAt(folder, folder) && opened.Next(entry);) {
      const Path path = folder / entry.name;
      if (IsPlainFile(entry.attributes))
        Told(TryWhileLocked([&] { return opened.Delete(path); }), Trace::File, path, entry.size);
      else if (!IsFolder(entry.attributes))
        TellStayed(path, Why::NotPlain);
      DoEventsNowAndThen();
    }
  });
}

Path InInstallation(WideView name) { return PathOf(Widen(OperaPath()).append(name)); }

Path InProfile7(WideView name) {
  const Path folder = valueOr(Path(), [] { return GetSpecialFolder(kApplicationDataFolder); });
  return folder / Wide<"Opera\\OPERA7\\profile">() / name;
}

}  // namespace

std::string OperaPath() {
  const NoReports quiet;  // a path is no number, and nobody is to hear of it
  return std::to_string(GetSettingString(HKEY_LOCAL_MACHINE, kOperaKey, "Path"));
}

Path GetSpecialFolder(int identifier) { return FindSpecialFolder(identifier); }

void CleanOperaCookies() { WipeQuietly(InInstallation(Wide<"\\cookies.dat">())); }
void CleanOpera7Cookies() { WipeQuietly(InProfile7(Wide<"cookies4.dat">())); }
void CleanOperaCache() { ClearFolder(InInstallation(Wide<"\\Cache">())); }
void CleanOpera7Cache() { ClearFolder(InProfile7(Wide<"cache4">())); }

void CleanOperaTypedUrls() {
  WipeQuietly(InProfile7(Wide<"global.dat">()));
  WipeQuietly(InProfile7(Wide<"opera.dir">()));
}

}  // namespace cleaners
