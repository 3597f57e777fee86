#include "cleaners/NetScapeEraser.h"

#include <cstddef>
#include <optional>
#include <string>
#include "cleaners/folder_facts.h"
#include "cleaners/folder_walk.h"
#include "cleaners/netscape_rules.h"
#include "cleaners/wipe_file.h"
#include "cleaners/wipe_state.h"
#include "platform/Reg32.h"
#include "platform/message_pump.h"
#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "platform/stop_request.h"
#include "platform/told_of_files.h"

namespace cleaners {
using namespace platform;

namespace {

constexpr WideView kNavigator = Wide<"Software\\Netscape\\Netscape Navigator">();

// "FieldSchema.tbl" is in it twice, which does no harm: the second attempt finds no file.
constexpr WideView kTypedUrlFiles[] = {Wide<"FieldSchema.tbl">(), Wide<"SchemaConcat.tbl">(), Wide<"SchemaValue.tbl">(),
                                       Wide<"FieldSchema.tbl">(), Wide<"URLFieldSchema.tbl">()};
constexpr WideView kTypedUrlNames =
    Wide<"FieldSchema.tbl SchemaConcat.tbl SchemaValue.tbl FieldSchema.tbl URLFieldSchema.tbl">();
constexpr WideView kMailFiles[] = {Wide<"mail\\trash">(), Wide<"mail\\trash.nsm">()};
constexpr WideView kMailNames = Wide<"trash trash.msf">();
constexpr WideView kCacheFolders[] = {Wide<"cache">()};

WideText NavigatorText(WideView subKey, WideView value) {
  return TextValue(HKEY_LOCAL_MACHINE, WideText(kNavigator).append(subKey), WideText(value)).value_or(L"");
}

// Both empty when there is no such profile. A folder that is no full path would be looked for below the current one.
Path CommunicatorProfile() {
  const WideText user = Trim(NavigatorText(Wide<"\\Users">(), Wide<"CurrentUser">()));
  if (user.empty() || user.find(L'\\') != WideText::npos) return {};  // it names a key below "Users"
  return FullPath(NavigatorText(WideText(Wide<"\\Users\\">()).append(user), Wide<"DirRoot">()));
}

Path Netscape6Profile() {
  const WideText user = NavigatorText(Wide<"\\biff">(), Wide<"CurrentUser">());
  const WideText install = NavigatorText(Wide<"\\Main">(), Wide<"Install Directory">());
  return IsUserName(user) && IsAbsolutePath(install) ? FullPath(ProfileFolderOf(install, user)) : Path();
}

// Empty when the system knows neither of its two places.
Path MozillaRoot() {
  const Path profile = FindSpecialFolder(kProfileFolder);
  if (!profile.IsEmpty()) return profile / Wide<"Application Data\\Mozilla\\Profiles">();
  return FindSpecialFolder(kApplicationDataFolder) / Wide<"Mozilla\\Profiles">();
}

// From the profile's folder down to the one that the target is in. What the profile lies in may lead where it likes.
bool LeadsThroughALink(const Path& target, const Path& profile) {
  Path folder = target;
  do {
    folder.RemoveName();
    if (IsLink(NativeAttributes(folder))) return true;
  } while (!folder.IsRoot() && !(folder == profile));
  return false;
}

template <class Names>
void AppendTargets(const Path& profile, const Names& names, FileList& results) {
  // Whoever registered it, a folder to keep is no profile. Files of known names and the cache go from a profile, not all
  // that it holds: a system that cannot tell every folder to keep does not put an end to that.
  if (profile.IsEmpty() || !MayClearFolder(FindFolderFacts(profile, Untold::IsLeftOut))) return;
  for (const WideView name : names)
    if (const Path target = profile / name; !LeadsThroughALink(target, profile)) results.push_back(target);
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

class FileSearch final : public FolderVisitor {
 public:
  FileSearch(WideView nameList, FileList& results) : nameList_(nameList), results_(results) {}

  bool IsOver() override { return StopErase; }
  void AtFile(const Path& path, const FolderEntry& entry) override {
    if (IsInNameList(entry.listedName, nameList_)) results_.push_back(path);
  }
  void AtFolder(const Path&) override {}

 private:
  WideView nameList_;
  FileList& results_;
};

class FolderSearch final : public FolderVisitor {
 public:
  FolderSearch(WideView name, FileList& results) : name_(name), results_(results) {}

  bool IsOver() override { return StopErase; }
  void AtFile(const Path&, const FolderEntry&) override {}
  void AtFolder(const Path& path) override {
    if (EqualIgnoringCase(path.Name(), name_)) results_.push_back(path);
  }
  void AtLink(const Path&) override {}

 private:
  WideView name_;
  FileList& results_;
};

class Emptying final : public FolderVisitor {
 public:
  bool IsOver() override { return StopErase; }
  void AtFile(const Path& path, const FolderEntry& entry) override { static_cast<void>(Wipe(path, entry.size, WipePasses)); }
  void AtFolder(const Path& path) override { Told(NativeRemoveFolder(path), Trace::Folder, path); }
  void AtOtherLink(const Path& path) override { TellStayed(Trace::Folder, path, Why::Link); }
};

void Search(const Path& root, FolderVisitor& search) {
  if (IsWalkableFolder(root)) WalkFolder(root, search);
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
  quietly([&] { FindFoldersByName(MozillaRoot(), Wide<"cache">(), list); });
  for (std::size_t index = 1; index < list.size() && !StopErase; ++index) ClearDirectory(list[index]);
}

void FindFilesByName(const Path& root, WideView nameList, FileList& results) {
  FileSearch search(nameList, results);
  Search(root, search);
}

void FindFoldersByName(const Path& root, WideView name, FileList& results) {
  FolderSearch search(name, results);
  Search(root, search);
}

void DeleteFile(const Path& path, const std::int16_t& passes) { static_cast<void>(WipeIfThere(path, passes)); }

void ClearDirectory(const Path& folder) {
  Emptying emptying;
  Search(folder, emptying);
}

}  // namespace cleaners
