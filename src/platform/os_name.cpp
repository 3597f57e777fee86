#include "platform/os_name.h"

namespace platform {

std::string OsNameOf(const WindowsVersion& version) {
  switch (version.platform) {
    case 0:
      return "Microsoft Win32s";
    case 1:
      if (version.major < 5 && (version.major != 4 || version.minor < 1)) return "Microsoft Windows 95";
      return "Microsoft Windows 98";
    case 2:
      if (version.major < 5) return "Microsoft Windows NT";
      if (version.major > 5) return {};
      if (version.minor == 1) return "Microsoft Windows XP Build " + std::to_string(version.build);
      return "Microsoft Windows 2000";
    default:
      return {};
  }
}

}  // namespace platform
