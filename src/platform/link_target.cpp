#include "platform/link_target.h"

#include <cstdint>

namespace platform {

namespace {

constexpr std::uint32_t kMountPoint = 0xA0000003;    // a junction or a mounted volume
constexpr std::uint32_t kSymbolicLink = 0xA000000C;  // Windows Vista, and what its disks bring to older systems
constexpr int kMostLinks = 63;                       // as many as the system follows
constexpr int kMostDrives = 26;

constexpr WideView kDevices = Wide<"\\??\\">();
constexpr WideView kShares = Wide<"UNC\\">();
constexpr WideView kVolume = Wide<"Volume{">();

std::uint32_t NumberAt(std::string_view data, std::size_t at, std::size_t bytes) {
  std::uint32_t number = 0;
  while (bytes-- != 0) number = number << 8 | static_cast<unsigned char>(data[at + bytes]);
  return number;
}

WideText TextAt(std::string_view data, std::size_t at, std::size_t bytes) {
  if (at > data.size() || bytes > data.size() - at || bytes % 2 != 0) return {};
  WideText text;
  for (const std::size_t end = at + bytes; at < end; at += 2) text += static_cast<WideChar>(NumberAt(data, at, 2));
  return text;
}

// "C:\x" or "\\server\share\x" for the system's own "\??\C:\x" and "\??\UNC\server\share\x".
WideText WithoutDevices(WideView text) {
  if (!text.starts_with(kDevices)) return WideText(text);
  text.remove_prefix(kDevices.size());
  if (!text.starts_with(kShares)) return WideText(text);
  return WideText(Wide<"\\\\">()).append(text.substr(kShares.size()));
}

Path RootOf(Path path) {
  while (!path.IsEmpty() && !path.IsRoot()) path.RemoveName();
  return path;
}

// What of `path` comes after the folder that it lies below; empty for that folder itself.
WideText Below(const Path& path, const Path& folder) {
  if (path == folder) return {};
  return path.Native().substr(AppendBackslash(folder.Native()).size());
}

Path Joined(const Path& folder, const WideText& names) { return names.empty() ? folder : folder / names; }

// The path with its first link followed; nothing when there is none on it.
std::optional<Path> FollowFirst(const Path& path, LinkReader read) {
  Path folder = RootOf(path);
  WideText rest = Below(path, folder);
  while (!rest.empty()) {
    const std::size_t end = rest.find('\\');
    const Path place = folder;
    folder /= WideView(rest).substr(0, end);
    rest.erase(0, end == WideText::npos ? end : end + 1);
    const std::optional<LinkText> link = read(folder);
    if (link && !link->isOwnPlace) return Joined(LinkTarget(place, *link), rest);
  }
  return {};
}

}  // namespace

LinkText ReadReparseData(std::string_view data) {
  constexpr std::size_t kNumbers = 8;        // tag, length and nothing come before
  constexpr std::size_t kOfMountPoint = 16;  // where its texts begin
  constexpr std::size_t kOfSymbolicLink = 20;
  LinkText link;
  if (data.size() < kOfMountPoint) return link;
  const std::uint32_t tag = NumberAt(data, 0, 4);
  if (tag != kMountPoint && (tag != kSymbolicLink || data.size() < kOfSymbolicLink)) return link;
  const std::size_t texts = tag == kMountPoint ? kOfMountPoint : kOfSymbolicLink;
  link.isRelative = tag == kSymbolicLink && (NumberAt(data, kOfMountPoint, 4) & 1) != 0;
  link.text = TextAt(data, texts + NumberAt(data, kNumbers, 2), NumberAt(data, kNumbers + 2, 2));
  link.isOwnPlace = !link.isRelative && WithoutDevices(link.text).starts_with(kVolume);
  return link;
}

Path LinkTarget(const Path& place, const LinkText& link) {
  if (link.text.empty()) return {};
  if (!link.isRelative) return FullPath(WithoutDevices(link.text));
  return (link.text.front() == '\\' ? RootOf(place) : place).Resolve(link.text);
}

Path FollowLinks(const Path& path, LinkReader read) {
  Path reached = path;
  for (int followed = 0; followed <= kMostLinks && !reached.IsEmpty(); ++followed) {
    std::optional<Path> further = FollowFirst(reached, read);
    if (!further) return reached;
    reached = *further;
  }
  return {};
}

Path FollowSubstitutions(const Path& path, DeviceReader read) {
  Path reached = path;
  for (int followed = 0; followed <= kMostDrives && !reached.IsEmpty(); ++followed) {
    const Path root = RootOf(reached);
    const WideText drive = root.Shown().substr(0, 2);
    if (!drive.ends_with(':')) return reached;
    const Path target = FullPath(WithoutDevices(read(drive)));
    if (target.IsEmpty() || target == root) return reached;
    reached = Joined(target, Below(reached, root));
  }
  return {};
}

}  // namespace platform
