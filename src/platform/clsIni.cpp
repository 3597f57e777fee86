#include "platform/clsIni.h"

#include "platform/message_box.h"
#include "platform/native_files.h"

namespace platform {

namespace {

void ShowError(const char* text) { ShowMessage(text, "Error", MB_OK | MB_ICONEXCLAMATION); }

}  // namespace

std::string clsIni::GetIniSetting(const std::string& section, const std::string& key) const {
  if (iniPath_.empty()) return {};  // the system's own settings, win.ini, are what some systems would take
  char buffer[750] = {};
  const DWORD length = ::GetPrivateProfileStringA(section.c_str(), key.c_str(), "", buffer, sizeof buffer, iniPath_.c_str());
  return std::string(buffer, length);
}

void clsIni::SaveIniSetting(const std::string& section, const std::string& key, const std::string& value) const {
  if (iniPath_.empty()) return;
  ::WritePrivateProfileStringA(section.c_str(), key.c_str(), value.c_str(), iniPath_.c_str());
}

void clsIni::DeleteIni() const {
  // In lower case alone: the file that the program names ends so, and one named otherwise is somebody else's.
  if (!iniPath_.ends_with(".ini")) {
    ShowError("The file in the IniPath property is not an ini file or doesn't exist!");
  } else if (!NativeDeleteFile(PathOf(Widen(iniPath_)))) {
    ShowError("The file in the IniPath property was not found!");
  }
}

}  // namespace platform
