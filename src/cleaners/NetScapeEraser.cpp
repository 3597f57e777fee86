#include "cleaners/NetScapeEraser.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

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

// What a cleaner removes, and below which folders it was found.
struct Collected {
  FileList list = FileList(1);
  std::vector<Path> roots;
};

// The folder of a target as it is now, entered from the profile's folder on and nowhere through a link; none where that
// leads to it no longer. What the profile lies in may lead where it likes.
OpenFolder OpenBelow(const Path& root, const Path& folder) {
  if (folder == root) return OpenForWalk(root);
  if (folder.IsEmpty() || folder.IsRoot()) return OpenFolder();
  const OpenFolder above = OpenBelow(root, folder.Parent());
  return above ? above.Enter(folder) : OpenFolder();
}

OpenFolder OpenBelow(const std::vector<Path>& roots, const Path& folder) {
  for (const Path& root : roots)
    if (IsSameOrBelow(folder, root))
      if (OpenFolder opened = OpenBelow(root, folder)) return opened;
  return OpenFolder();
}

// What the two registered profiles hold of the targets, unless a stop is asked for and `always` is not.
template <class Names>
Collected Collect(const Names& names, bool always) {
  Collected found;
  DoEvents();
  for (const auto profile : {&CommunicatorProfile, &Netscape6Profile})
    quietly([&] {
      const Path folder = always || !StopErase ? profile() : Path();
      if (folder.IsEmpty() || !IsFolderAndNoLink(NativeAttributes(folder))) return;
      // Whoever registered it, a folder to keep is no profile. Files of known names and the cache go from a profile, not all
      // that it holds: a system that cannot tell every folder to keep does not put an end to that.
      if (!MayClearFolder(FindFolderFacts(folder, Untold::IsLeftOut))) return;
      found.roots.push_back(folder);
      for (const WideView name : names) found.list.push_back(folder / name);
    });
  return found;
}

// Events have run since the files were found: the folders on the way are entered anew for each.
void DeleteFiles(const Collected& found) {
  for (std::size_t index = 1; index < found.list.size() && !StopErase; ++index) {
    const Path& file = found.list[index];
    const OpenFolder in = OpenBelow(found.roots, file.Parent());
    if (in) static_cast<void>(WipeIfThere(in, file, WipePasses));
    DoEventsNowAndThen();
  }
}

class FileSearch final : public FolderVisitor {
 public:
  FileSearch(WideView nameList, FileList& results) : nameList_(nameList), results_(results) {}

  bool IsOver() override { return StopErase; }
  void AtFile(const OpenFolder&, const Path& path, const FolderEntry& entry) override {
    if (IsInNameList(entry.listedName, nameList_)) results_.push_back(path);
  }
  void AtFolder(const OpenFolder&, const Path&) override {}

 private:
  WideView nameList_;
  FileList& results_;
};

class FolderSearch final : public FolderVisitor {
 public:
  FolderSearch(WideView name, FileList& results) : name_(name), results_(results) {}

  bool IsOver() override { return StopErase; }
  void AtFile(const OpenFolder&, const Path&, const FolderEntry&) override {}
  void AtFolder(const OpenFolder&, const Path& path) override {
    if (EqualIgnoringCase(path.Name(), name_)) results_.push_back(path);
  }
  void AtLink(const OpenFolder&, const Path&) override {}

 private:
  WideView name_;
  FileList& results_;
};

class Emptying final : public FolderVisitor {
 public:
  bool IsOver() override { return StopErase; }
  void AtFile(const OpenFolder& in, const Path& path, const FolderEntry& entry) override {
    static_cast<void>(Wipe(in, path, entry.size, WipePasses));
  }
  void AtFolder(const OpenFolder& in, const Path& path) override { Told(in.Remove(path), Trace::Folder, path); }
};

void Search(const Path& root, FolderVisitor& search) { WalkFolder(root, OpenForWalk(root), search); }

template <class Names>
void EraseFiles(const Names& names, WideView mozillaNames) {
  Collected found = Collect(names, false);
  quietly([&] {
    found.roots.push_back(MozillaRoot());
    FindFilesByName(found.roots.back(), mozillaNames, found.list);
  });
  DeleteFiles(found);
}

}  // namespace

void NSTypedUrl() { EraseFiles(kTypedUrlFiles, kTypedUrlNames); }
void CleanNetscapeMail() { EraseFiles(kMailFiles, kMailNames); }

void CleanNescapeCache() {
  Collected found = Collect(kCacheFolders, true);
  quietly([&] {
    found.roots.push_back(MozillaRoot());
    FindFoldersByName(found.roots.back(), Wide<"cache">(), found.list);
  });
  Emptying emptying;
  for (std::size_t index = 1; index < found.list.size() && !StopErase; ++index)
    WalkFolder(found.list[index], OpenBelow(found.roots, found.list[index]), emptying);
}

void FindFilesByName(const Path& root, WideView nameList, FileList& results) {
  FileSearch search(nameList, results);
  Search(root, search);
}

void FindFoldersByName(const Path& root, WideView name, FileList& results) {
  FolderSearch search(name, results);
  Search(root, search);
}

void DeleteFile(const Path& path, const std::int16_t& passes) { static_cast<void>(WipeIfThere(OpenFolder(), path, passes)); }

void ClearDirectory(const Path& folder) {
  Emptying emptying;
  Search(folder, emptying);
}

}  // namespace cleaners
