#include "shred/folder_removal.h"

#include <string>
#include <vector>

#include "cleaners/folder_facts.h"
#include "cleaners/folder_guard.h"
#include "cleaners/folder_walk.h"
#include "cleaners/mask_ending.h"
#include "platform/message_pump.h"
#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/told_of_files.h"
#include "shred/folder_chain.h"

namespace shred {
using namespace platform;
using cleaners::FolderRefusal;

namespace {

// Why a folder stays as it is; as of what is no folder also where the system lacks a function that would tell which folders
// to keep.
FolderRefusal RefusalOf(const Path& folder) {
  if (folder.IsRoot()) return FolderRefusal::Root;
  if (IsLink(NativeAttributes(folder))) return FolderRefusal::Link;
  FolderRefusal refusal = FolderRefusal::NoFolder;
  resumeNext([&] {
    if (cleaners::IsWalkableFolder(folder)) refusal = cleaners::RefusalOf(cleaners::FindFolderFacts(folder));
  });
  return refusal;
}

bool IsRemovableFolder(const Path& folder) { return RefusalOf(folder) == FolderRefusal::None; }

void DeleteFilesIn(const Path& folder, WideView mask) {
  FolderListing listing(folder);
  FolderEntry entry;
  while (listing.Next(entry)) {
    // What stays is met again by the removal of the tree, which tells of it.
    if (!IsFolder(entry.attributes) && cleaners::IsMeantByMask(entry.name, mask) && NativeDeleteFile(folder / entry.name))
      TellErased(Trace::File, 1, entry.size);
    DoEventsNowAndThen();
  }
}

void RemoveSubfolder(const Path& folder, const FolderEntry& entry) {
  // Asked once more: a link may have taken the folder's place since it was listed.
  if (!IsLink(entry.attributes) && !IsLink(NativeAttributes(folder))) {
    NativeSetAttributes(folder, FILE_ATTRIBUTE_NORMAL);
    for (const WideView mask : {Wide<"*.gif">(), Wide<"*.htm">(), Wide<"*.cab">(), Wide<"*.jpg">(), Wide<"*.css">(),
                                Wide<"*.swf">(), Wide<"*">(), Wide<"*.*">()})
      DeleteFilesIn(folder, mask);
  } else if (!IsNamedLink(entry)) {
    return;
  }
  if (NativeRemoveFolder(folder)) TellErased(Trace::Folder);
}

// Deletes what is read-only too.
class TreeRemoval final : public cleaners::FolderVisitor {
 public:
  bool IsOver() override { return false; }

  void AtFile(const Path& path, const FolderEntry& entry) override {
    bool isDone = NativeDeleteFile(path);
    if (!isDone && (entry.attributes & FILE_ATTRIBUTE_READONLY) != 0) {
      NativeSetAttributes(path, FILE_ATTRIBUTE_NORMAL);
      isDone = NativeDeleteFile(path);
    }
    Told(isDone, Trace::File, path, entry.size);
  }

  void AtFolder(const Path& path) override {
    bool isDone = NativeRemoveFolder(path);
    if (!isDone && ::GetLastError() == ERROR_ACCESS_DENIED) {
      NativeSetAttributes(path, FILE_ATTRIBUTE_NORMAL);
      isDone = NativeRemoveFolder(path);
    }
    Told(isDone, Trace::Folder, path);
  }

  void AtOtherLink(const Path& path) override { TellStayed(Trace::Folder, path, Why::Link); }
};

void RemoveFirstSubfolder(const Path& root) {
  FolderListing listing(root);
  FolderEntry entry;
  bool over = false;
  while (!over && listing.Next(entry)) {
    if (IsFolder(entry.attributes) && entry.name != L"." && entry.name != L"..") {
      RemoveSubfolder(root / entry.name, entry);
      // The walk and the test whether the subfolder exists share one listing: after the test it names that subfolder alone.
      over = true;
    }
    DoEvents();
  }
}

// True when the folder itself is gone.
bool RemoveTree(const Path& root) {
  TreeRemoval removal;
  cleaners::WalkFolder(root, removal);
  removal.AtFolder(root);
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
  if (IsRemovableFolder(folder)) RemoveFirstSubfolder(folder);
}

bool RemoveFolderTree(const Path& folder) { return IsRemovableFolder(folder) && RemoveTree(folder); }

// Each step judges the folder for itself: events run in the one before.
FolderRefusal ShredFolder(const Path& folder) {
  const FolderRefusal refusal = RefusalOf(folder);
  if (refusal != FolderRefusal::None) return refusal;
  DeleteFilesIn(folder, Wide<"*.*">());
  ClearSubFolders(folder);
  RemoveFolderTree(folder);
  return FolderRefusal::None;
}

}  // namespace shred
