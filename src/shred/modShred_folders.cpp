// The folder procedures of modShred.
#include "cleaners/folder_facts.h"
#include "cleaners/folder_walk.h"
#include "cleaners/mask_ending.h"
#include "platform/message_pump.h"
#include "platform/runtime_error.h"
#include "shred/folder_chain.h"
#include "shred/modShred.h"

namespace shred {
using namespace platform;

namespace {

// The folder's path with its "\"; empty for a folder that stays as it is, also where the system lacks a function that would
// tell which folders to keep.
NativePath RemovableFolder(const std::string& folder) {
  NativePath removable;
  resumeNext([&] {
    const NativePath native = cleaners::WalkableFolder(folder);
    if (!native.empty() && cleaners::MayEmptyFolder(cleaners::FindFolderFacts(ShownPath(native), cleaners::SystemFolders())))
      removable = native;
  });
  return removable;
}

void DeleteFilesOf(const NativePath& folderWithBackslash, const char* mask) {
  FolderListing listing(folderWithBackslash);
  FolderEntry entry;
  while (listing.Next(entry)) {
    if (!IsFolder(entry.attributes) && cleaners::IsMeantByMask(ShownPath(entry.name), mask))
      NativeDeleteFile(folderWithBackslash + entry.name);
    DoEventsNowAndThen();
  }
}

void ClearSubFolder(const NativePath& folder, const FolderEntry& entry) {
  // Asked once more: a link may have taken the folder's place since it was listed.
  if (!IsLink(entry.attributes) && !IsLink(NativeAttributes(folder))) {
    NativeSetAttributes(folder, FILE_ATTRIBUTE_NORMAL);
    for (const char* mask : {"*.gif", "*.htm", "*.cab", "*.jpg", "*.css", "*.swf", "*", "*.*"})
      DeleteFilesOf(folder + L'\\', mask);
  } else if (!IsNamedLink(entry)) {
    return;
  }
  NativeRemoveFolder(folder);
}

// Deletes what is read-only too.
class TreeRemoval final : public cleaners::FolderVisitor {
 public:
  bool IsOver() override { return false; }

  void AtFile(const NativePath& path, const FolderEntry& entry) override {
    if (NativeDeleteFile(path) || (entry.attributes & FILE_ATTRIBUTE_READONLY) == 0) return;
    NativeSetAttributes(path, FILE_ATTRIBUTE_NORMAL);
    NativeDeleteFile(path);
  }

  void AtFolder(const NativePath& path) override {
    const NativePath bare = path.back() == L'\\' ? path.substr(0, path.size() - 1) : path;
    if (NativeRemoveFolder(bare) || ::GetLastError() != ERROR_ACCESS_DENIED) return;
    NativeSetAttributes(bare, FILE_ATTRIBUTE_NORMAL);
    NativeRemoveFolder(bare);
  }
};

void ClearFirstSubFolder(const NativePath& root) {
  FolderListing listing(root);
  FolderEntry entry;
  bool over = false;
  while (!over && listing.Next(entry)) {
    if (IsFolder(entry.attributes) && entry.name != L"." && entry.name != L"..") {
      ClearSubFolder(root + entry.name, entry);
      // The walk and the test whether the subfolder exists share one listing: after the test it names that subfolder alone.
      over = true;
    }
    DoEvents();
  }
}

// True when the folder itself is gone.
bool RemoveTree(const NativePath& root) {
  TreeRemoval removal;
  cleaners::WalkFolder(root, removal);
  removal.AtFolder(root);
  return NativeAttributes(root) == INVALID_FILE_ATTRIBUTES;
}

}  // namespace

bool FolderCheck(const std::string& path, bool create) {
  if (IsFolder(NativeAttributes(ToNativePath(path)))) return true;
  if (create) {
    for (const std::string& folder : FolderChain(path))
      if (!IsFolder(NativeAttributes(ToNativePath(folder)))) ::CreateDirectoryA(folder.c_str(), nullptr);
  }
  return false;
}

void ClearSubFolders(const std::string& folder) {
  const NativePath root = RemovableFolder(folder);
  if (!root.empty()) ClearFirstSubFolder(root);
}

bool RemoveFolderTree(const std::string& folder) {
  const NativePath root = RemovableFolder(folder);
  return !root.empty() && RemoveTree(root);
}

// The folder is judged once, and between the steps, while which events run, only asked whether it is still one.
void ShredFolder(const std::string& folder) {
  const NativePath root = RemovableFolder(folder);
  if (root.empty()) return;
  DeleteFilesOf(root, "*.*");
  if (cleaners::WalkableFolder(folder) == root) ClearFirstSubFolder(root);
  if (cleaners::WalkableFolder(folder) == root) RemoveTree(root);
}

}  // namespace shred
