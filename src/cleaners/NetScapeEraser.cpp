#include "cleaners/NetScapeEraser.h"

#include "cleaners/folder_walk.h"
#include "cleaners/netscape_rules.h"
#include "cleaners/wipe_file.h"
#include "cleaners/wipe_state.h"
#include "platform/Reg32.h"
#include "platform/message_pump.h"
#include "platform/path_text.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "platform/stop_request.h"
#include "platform/text_value.h"

namespace cleaners {
using namespace platform;

namespace {

constexpr char kNavigator[] = "Software\\Netscape\\Netscape Navigator";

// "FieldSchema.tbl" stands in it twice. That is meant and does no harm: the second attempt finds no file.
constexpr const char* kTypedUrlFiles[] = {"FieldSchema.tbl", "SchemaConcat.tbl", "SchemaValue.tbl", "FieldSchema.tbl",
                                          "URLFieldSchema.tbl"};
constexpr char kTypedUrlNames[] = "FieldSchema.tbl SchemaConcat.tbl SchemaValue.tbl FieldSchema.tbl URLFieldSchema.tbl";
constexpr const char* kMailFiles[] = {"mail\\trash", "mail\\trash.nsm"};
constexpr char kMailNames[] = "trash trash.msf";
constexpr const char* kCacheFolders[] = {"cache"};

std::string MachineText(const std::string& key, const char* value) {
  return TextValue(HKEY_LOCAL_MACHINE, key, value).value_or("");
}

// Both empty when there is no such profile. A folder that is no full path would be looked for below the current one.
std::string CommunicatorProfile() {
  const std::string users = std::string(kNavigator) + "\\Users";
  const std::string user = Trim(MachineText(users, "CurrentUser"));
  if (user.empty() || user.find('\\') != std::string::npos) return {};  // it names a key below "Users"
  const std::string folder = MachineText(users + "\\" + user, "DirRoot");
  return IsAbsolutePath(folder) ? AppendBackslash(folder) : "";
}

std::string Netscape6Profile() {
  const std::string user = MachineText(std::string(kNavigator) + "\\biff", "CurrentUser");
  const std::string install = MachineText(std::string(kNavigator) + "\\Main", "Install Directory");
  return IsUserName(user) && IsAbsolutePath(install) ? ProfileFolderOf(install, user) : "";
}

// On no drive, and so nowhere, when the system knows neither of its two places.
std::string MozillaRoot() {
  const std::string profile = AppendBackslash(FindSpecialFolder(kProfileFolder));
  if (profile != "\\") return profile + "Application Data\\Mozilla\\Profiles";
  return AppendBackslash(FindSpecialFolder(kApplicationDataFolder)) + "Mozilla\\Profiles";
}

// From the profile's folder, which ends in "\", down to the one that the target is in. What stands above the profile may
// lead where it likes.
bool LeadsThroughALink(const NativePath& target, const NativePath& profile) {
  for (std::size_t end = target.rfind(L'\\'); end != NativePath::npos && end + 1 >= profile.size();
       end = target.rfind(L'\\', end - 1))
    if (IsLink(NativeAttributes(target.substr(0, end)))) return true;
  return false;
}

template <class Names>
void AppendTargets(const std::string& profile, const Names& names, FileList& results) {
  if (profile.empty()) return;
  for (const char* name : names) {
    const NativePath target = ToNativePath(profile + name);
    if (!target.empty() && !LeadsThroughALink(target, ToNativePath(profile))) results.push_back(target);
  }
}

// What the two registered profiles hold of the targets, unless a stop is asked for and `always` is not.
template <class Names>
FileList Collect(const Names& names, bool always) {
  FileList list(1);
  DoEvents();
  for (const auto profile : {&CommunicatorProfile, &Netscape6Profile})
    quietly([&] {
      if (always || !StopErase) AppendTargets(profile(), names, list);
    });
  return list;
}

void DeleteFiles(const FileList& list) {
  for (std::size_t index = 1; index < list.size() && !StopErase; ++index) {
    DeleteFile(list[index], WipePasses);
    DoEventsNowAndThen();
  }
}

std::wstring_view NameOf(std::wstring_view path) {
  if (path.ends_with(L'\\')) path.remove_suffix(1);
  return path.substr(path.rfind(L'\\') + 1);
}

// A name outside the code page is none of those that are looked for.
std::string PlainText(std::wstring_view name) {
  std::string text;
  for (const wchar_t character : name) text += character < 0x80 ? static_cast<char>(character) : '?';
  return text;
}

class FileSearch final : public FolderVisitor {
 public:
  FileSearch(const std::string& nameList, FileList& results) : nameList_(nameList), results_(results) {}

  bool IsOver() override { return StopErase; }
  void AtFile(const NativePath& path, const FolderEntry& entry) override {
    if (IsInNameList(PlainText(entry.listedName), nameList_)) results_.push_back(path);
  }
  void AtFolder(const NativePath&) override {}

 private:
  const std::string& nameList_;
  FileList& results_;
};

class FolderSearch final : public FolderVisitor {
 public:
  FolderSearch(const std::string& name, FileList& results) : name_(name), results_(results) {}

  bool IsOver() override { return StopErase; }
  void AtFile(const NativePath&, const FolderEntry&) override {}
  void AtFolder(const NativePath& path) override {
    if (path.ends_with(L'\\') && EqualIgnoringCase(PlainText(NameOf(path)), name_)) results_.push_back(path);
  }

 private:
  const std::string& name_;
  FileList& results_;
};

class Emptying final : public FolderVisitor {
 public:
  bool IsOver() override { return StopErase; }
  void AtFile(const NativePath& path, const FolderEntry& entry) override {
    static_cast<void>(OverwriteAndDelete(path, entry.size, WipePasses));
  }
  void AtFolder(const NativePath& path) override { NativeRemoveFolder(path); }
};

void Search(const std::string& root, FolderVisitor& search) {
  const NativePath native = WalkableFolder(root);
  if (!native.empty()) WalkFolder(native, search);
}

// With or without "\" behind it. Nothing for a path that could not be formed: walked through, it would be the current
// folder.
void ClearNativeDirectory(NativePath folder) {
  if (folder.ends_with(L'\\')) folder.pop_back();
  if (!IsFolderAndNoLink(NativeAttributes(folder))) return;
  Emptying emptying;
  WalkFolder(folder + L'\\', emptying);
}

}  // namespace

void NSTypedUrl() {
  FileList list = Collect(kTypedUrlFiles, false);
  quietly([&] { FindFilesByName(MozillaRoot(), kTypedUrlNames, list); });
  DeleteFiles(list);
}

void CleanNetscapeMail() {
  FileList list = Collect(kMailFiles, false);
  quietly([&] { FindFilesByName(MozillaRoot(), kMailNames, list); });
  DeleteFiles(list);
}

void CleanNescapeCache() {
  FileList list = Collect(kCacheFolders, true);
  quietly([&] { FindFoldersByName(MozillaRoot(), "cache", list); });
  for (std::size_t index = 1; index < list.size() && !StopErase; ++index) ClearNativeDirectory(list[index]);
}

void FindFilesByName(const std::string& root, const std::string& nameList, FileList& results) {
  FileSearch search(nameList, results);
  Search(root, search);
}

void FindFoldersByName(const std::string& root, const std::string& name, FileList& results) {
  FolderSearch search(name, results);
  Search(root, search);
}

void DeleteFile(const NativePath& path, const std::int16_t& passes) {
  static_cast<void>(OverwriteAndDeleteIfThere(path, passes));
}

void ClearDirectory(const std::string& folder) {
  const NativePath native = WalkableFolder(folder);
  if (!native.empty()) ClearNativeDirectory(native);
}

}  // namespace cleaners
