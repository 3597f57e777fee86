#include "platform/final_path.h"

#include "platform/link_target.h"
#include "platform/native_files.h"
#include "platform/system_functions.h"

namespace platform {

namespace {

// What the reparse point holds; no text where the system does not hand it out.
LinkText TextOfLink(const Path& folder) {
  constexpr DWORD kGetReparsePoint = 0x000900A8;  // FSCTL_GET_REPARSE_POINT
  constexpr DWORD kMostData = 16 * 1024;
  const UniqueFile opened(
      late::CreateFileWide(folder.Native().c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                           OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
  std::string data(kMostData, '\0');
  DWORD length = 0;
  if (!opened || !::DeviceIoControl(opened.get(), kGetReparsePoint, nullptr, 0, data.data(), kMostData, &length, nullptr))
    return {};
  data.resize(length);
  return ReadReparseData(data);
}

std::optional<LinkText> ReadLink(const Path& folder) {
  if (!IsLink(NativeAttributes(folder))) return {};
  return TextOfLink(folder);
}

WideText ReadDevice(WideView drive) {
  char device[2 * MAX_PATH] = "";
  const std::string name = Narrow(drive);
  return Widen(::QueryDosDeviceA(name.c_str(), device, sizeof device - 1) != 0 ? device : "");
}

}  // namespace

Path FinalPath(const Path& folder) {
  if (!UsesWideNames()) return FollowSubstitutions(folder, &ReadDevice);
  Path told = NativeFinalPath(folder);
  if (!told.IsEmpty() || NativeAttributes(folder) == INVALID_FILE_ATTRIBUTES) return told;
  return FollowLinks(folder, &ReadLink);
}

bool IsVolumeRoot(const Path& folder) {
  if (folder.IsEmpty() || !UsesWideNames() || !late::GetVolumePathName) return false;
  std::wstring volume(folder.Native().size() + MAX_PATH, L'\0');
  if (!late::GetVolumePathName(folder.Native().c_str(), volume.data(), static_cast<DWORD>(volume.size()))) return false;
  return IsSameOrBelow(SpelledPath(volume.c_str()), folder);
}

}  // namespace platform
