#include "shred/folder_removal.h"

#include <string>
#include <utility>

#include "cleaners/folder_facts.h"
#include "cleaners/folder_guard.h"
#include "cleaners/folder_walk.h"
#include "cleaners/locked_files.h"
#include "cleaners/mask_ending.h"
#include "platform/message_pump.h"
#include "platform/open_folder.h"
#include "platform/runtime_error.h"
#include "platform/told_of_files.h"
#include "shred/folder_chain.h"

namespace shred {
using namespace platform;
using cleaners::FolderRefusal;

namespace {

// A folder that may be removed, opened before it is judged, so that what is removed is what was judged; or why it stays as
// it is. As of what is no folder also where the system lacks a function that would tell which folders to keep.
struct Removable {
  OpenFolder opened;
  FolderRefusal refusal = FolderRefusal::NoFolder;
};

Removable OpenRemovable(const Path& folder) {
  Removable found;
  if (folder.IsRoot()) {
    found.refusal = FolderRefusal::Root;
  } else if (IsLink(NativeAttributes(folder))) {
    found.refusal = FolderRefusal::Link;
  } else if (OpenFolder opened = cleaners::OpenForWalk(folder)) {
    resumeNext([&] { found.refusal = cleaners::RefusalOf(cleaners::FindFolderFacts(folder)); });
    if (found.refusal == FolderRefusal::None) found.opened = std::move(opened);
  }
  return found;
}

// `from` is the folder that the user has named; `folder` is it or lies in it.
void DeleteFilesIn(OpenFolder& opened, const Path& folder, const Path& from, WideView mask) {
  FolderEntry entry;
  opened.StartOver(folder);
  while (opened.IsStillAt(folder, from) && opened.Next(entry)) {
    // What stays is met again by the removal of the tree, which tells of it.
    if (!IsFolder(entry.attributes) && cleaners::IsMeantByMask(entry.name, mask) && opened.Delete(folder / entry.name))
      TellErasedWith(Trace::File, entry.size);
    DoEventsNowAndThen();
  }
}

void RemoveSubfolder(OpenFolder& root, const Path& from, const FolderEntry& entry) {
  const Path folder = from / entry.name;
  if (!IsLink(entry.attributes)) {
    OpenFolder opened = root.Enter(folder);
    if (!opened) return;  // a link may have taken its place since it was listed
    const DWORD attributes = NativeAttributes(folder);
    root.SetAttributes(folder, FILE_ATTRIBUTE_NORMAL);
    for (const WideView mask : {Wide<"*.gif">(), Wide<"*.htm">(), Wide<"*.cab">(), Wide<"*.jpg">(), Wide<"*.css">(),
                                Wide<"*.swf">(), Wide<"*">(), Wide<"*.*">()})
      DeleteFilesIn(opened, folder, from, mask);
    if (!opened.IsStillAt(folder, from)) return;
    opened = OpenFolder();  // an open one cannot be removed
    if (root.Remove(folder))
      TellErased(Trace::Folder);
    else if (attributes != INVALID_FILE_ATTRIBUTES)
      root.SetAttributes(folder, attributes);
  } else if (IsNamedLink(entry) && root.Remove(folder)) {
    TellErased(Trace::Folder);
  }
}

// Deletes what is read-only too.
class TreeRemoval final : public cleaners::FolderVisitor {
 public:
  bool IsOver() override { return false; }

  void AtFile(const OpenFolder& in, const Path& path, const FolderEntry& entry) override {
    const auto deletes = [&] { return in.Delete(path); };
    bool isDone = cleaners::TryWhileLocked(deletes);
    const bool again = !isDone && (entry.attributes & FILE_ATTRIBUTE_READONLY) != 0;
    if (again) {
      in.SetAttributes(path, FILE_ATTRIBUTE_NORMAL);
      isDone = cleaners::TryWhileLocked(deletes);
    }
    Told(isDone, Trace::File, path, entry.size);
    if (again && !isDone) in.SetAttributes(path, entry.attributes);
  }

  void AtFolder(const OpenFolder& in, const Path& path) override {
    bool isDone = in.Remove(path);
    DWORD attributes = INVALID_FILE_ATTRIBUTES;
    if (!isDone && ::GetLastError() == ERROR_ACCESS_DENIED) {
      attributes = NativeAttributes(path);
      in.SetAttributes(path, FILE_ATTRIBUTE_NORMAL);
      isDone = in.Remove(path);
    }
    Told(isDone, Trace::Folder, path);
    if (!isDone && attributes != INVALID_FILE_ATTRIBUTES) in.SetAttributes(path, attributes);
  }
};

void RemoveFirstSubfolder(OpenFolder& opened, const Path& root) {
  FolderEntry entry;
  opened.StartOver(root);
  while (opened.IsStillAt(root, root) && opened.Next(entry)) {
    if (IsFolder(entry.attributes) && entry.name != L"." && entry.name != L"..") {
      RemoveSubfolder(opened, root, entry);
      DoEvents();
      // The walk and the test whether the subfolder exists share one listing: after the test it names that subfolder alone.
      return;
    }
    DoEvents();
  }
}

// True when the folder itself is gone.
bool RemoveTree(const Path& root, OpenFolder opened) {
  TreeRemoval removal;
  opened.StartOver(root);
  if (cleaners::WalkFolder(root, std::move(opened), removal)) removal.AtFolder(OpenFolder(), root);
  return NativeAttributes(root) == INVALID_FILE_ATTRIBUTES;
}

}  // namespace

bool FolderCheck(const Path& path, bool create) {
  if (IsFolder(NativeAttributes(path))) return true;
  if (create) {
    for (const Path& folder : FolderChain(path))
      if (!IsFolder(NativeAttributes(folder))) NativeMakeFolder(folder);
  }
  return false;
}

void ClearSubFolders(const Path& folder) {
  Removable found = OpenRemovable(folder);
  if (found.opened) RemoveFirstSubfolder(found.opened, folder);
}

bool RemoveFolderTree(const Path& folder) {
  Removable found = OpenRemovable(folder);
  return found.opened && RemoveTree(folder, std::move(found.opened));
}

// The folder is judged once and stays open through all three steps.
FolderRefusal ShredFolder(const Path& folder) {
  auto [opened, refusal] = OpenRemovable(folder);
  if (!opened) return refusal;
  DeleteFilesIn(opened, folder, folder, Wide<"*.*">());
  RemoveFirstSubfolder(opened, folder);
  RemoveTree(folder, std::move(opened));
  return FolderRefusal::None;
}

}  // namespace shred
