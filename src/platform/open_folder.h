// A folder that is open, and what is listed, entered and deleted in it.
//
// On the NT family it is a handle, and every step is relative to that: whatever takes the folder's place at its path
// meanwhile, a link above all, is not touched. Nothing that is named is followed where it leads, and nobody can rename or
// remove the folder before it is closed. On Windows 9x, which has neither links nor handles of folders, the steps go by
// paths.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/native_files.h"

namespace platform {

class OpenFolder {
 public:
  OpenFolder() = default;  // none

  // None for what is no folder, or a link to one, with the reason in GetLastError.
  explicit OpenFolder(const Path& folder);

  explicit operator bool() const { return folder_ || listing_ != nullptr; }

  // Of a listed subfolder, by the path that leads to it through this one; none as above.
  OpenFolder Enter(const Path& subfolder) const;

  // Whether the path still leads to this folder, and not through a link from `from` on, which the path begins with. It is
  // asked only after events have run: nothing else of this program can change that. Where the path of a folder below was
  // right, this one's was.
  bool IsStillAt(const Path& path, const Path& from);
  void TakeOverFrom(const OpenFolder& below) { eventsSeen_ = below.eventsSeen_; }

  // As FolderListing has it. After StartOver, by the path that leads here, the next one is the first one again. Rest is for
  // a listing that is not to go on soon: it keeps no more than what is still to come.
  bool Next(FolderEntry& entry);
  void StartOver(const Path& path);
  void Rest();

  // An entry of this folder by its path; false on failure, with the reason in GetLastError. Of none, the entry is reached by
  // its path alone.
  bool Delete(const Path& file) const;
  bool Remove(const Path& folder) const;  // an empty one, or a link, which goes and not its target
  bool SetAttributes(const Path& entry, DWORD attributes) const;

  // An existing file in it, not truncated; none for a link and any other reparse point, as OpenItself, which opens it where
  // this is no folder.
  UniqueFile Open(const Path& file, DWORD access, DWORD share) const;

 private:
  bool Judge();
  bool Fill();
  UniqueFile OpenEntry(const Path& entry, ACCESS_MASK access, ULONG share, ULONG options) const;

  UniqueFile folder_;                       // the NT family
  std::unique_ptr<FolderListing> listing_;  // elsewhere
  unsigned eventsSeen_ = 0;

  std::vector<std::uint64_t> block_;  // records of the listing
  std::size_t at_ = 0;                // bytes; where the next record begins
  bool startOver_ = true;
  bool ended_ = false;
};

}  // namespace platform
