#include "cleaners/OperaClean.h"

#include "platform/ErroHandle.h"
#include "platform/Reg32.h"
#include "platform/message_pump.h"
#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "platform/stop_request.h"

namespace cleaners {
using namespace platform;

namespace {

constexpr char kOperaKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Opera.exe";

// What a plain listing passes over, and with it the cleaners.
constexpr DWORD kNotPlain =
    FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_READONLY;

bool IsPlainFile(DWORD attributes) { return attributes != INVALID_FILE_ATTRIBUTES && (attributes & kNotPlain) == 0; }

void CleanFile(const std::string& path) {
  quietly([&] {
    const NativePath native = ToNativePath(path);
    if (IsPlainFile(NativeAttributes(native))) NativeDeleteFile(native);
  });
}

// The plain files directly inside the folder. One that is hidden, of the system or a link is left alone.
void CleanFolder(const std::string& path) {
  quietly([&] {
    const NativePath folder = ToNativePath(path);
    const DWORD attributes = NativeAttributes(folder);
    if (!IsFolderAndNoLink(attributes) || (attributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM)) != 0) return;
    FolderListing listing(folder + L'\\');
    for (FolderEntry entry; !StopErase && listing.Next(entry);) {
      if (IsPlainFile(entry.attributes)) NativeDeleteFile(folder + L'\\' + entry.name);
      DoEventsNowAndThen();
    }
  });
}

// Empty when the system does not know the folder of application data: the rest alone would be a path below the current one.
std::string InProfile7(const char* name) {
  const std::string folder = valueOr(std::string(), [] { return GetSpecialFolder(kApplicationDataFolder); });
  return folder.empty() ? "" : folder + "Opera\\OPERA7\\profile\\" + name;
}

}  // namespace

std::string OperaPath() {
  const NoReports quiet;  // a path is no number, and nobody is to hear of it
  return std::to_string(GetSettingString(HKEY_LOCAL_MACHINE, kOperaKey, "Path"));
}

std::string GetSpecialFolder(int identifier) {
  const std::string folder = FindSpecialFolder(identifier);
  return folder.empty() ? "" : folder + "\\";
}

void CleanOperaCookies() { CleanFile(OperaPath() + "\\cookies.dat"); }
void CleanOpera7Cookies() { CleanFile(InProfile7("cookies4.dat")); }
void CleanOperaCache() { CleanFolder(OperaPath() + "\\Cache"); }
void CleanOpera7Cache() { CleanFolder(InProfile7("cache4")); }

void CleanOperaTypedUrls() {
  CleanFile(InProfile7("global.dat"));
  CleanFile(InProfile7("opera.dir"));
}

}  // namespace cleaners
