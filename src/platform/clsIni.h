// Reads and writes the entries of one Windows initialisation (INI) file, and deletes the file. Texts and the path are ANSI.
#pragma once

#include <string>
#include <string_view>

namespace platform {

class clsIni {
 public:
  // The path of the file, kept as given; empty at first. For a name without a folder the profile calls take the file in
  // the Windows folder, the deletion the one in the current folder.
  const std::string& IniPath() const { return iniPath_; }
  void SetIniPath(std::string_view path) { iniPath_ = path; }

  // Empties the path. No file is touched.
  void ClearAllValues() { iniPath_.clear(); }

  // The first 749 characters of the value; empty for an empty path and a missing file, section or key.
  std::string GetIniSetting(const std::string& section, const std::string& key) const;

  // Makes what is missing of file, section and key, but no folder. A failure passes silently; an empty path writes nothing.
  void SaveIniSetting(const std::string& section, const std::string& key, const std::string& value) const;

  // Deletes the file when its path ends in ".ini" in this very spelling. Tells the user when it does not, and when the
  // system does not delete it, whatever its reason. Returns when the user has closed the message.
  void DeleteIni() const;

 private:
  std::string iniPath_;
};

}  // namespace platform
