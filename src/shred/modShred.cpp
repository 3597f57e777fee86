#include "shred/modShred.h"

#include "platform/native_files.h"
#include "shred/folder_chain.h"

bool Validate(const std::string& path) {
  const UniqueFile file(::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
  return static_cast<bool>(file);
}

bool FolderCheck(const std::string& path, bool create) {
  if (IsFolder(NativeAttributes(ToNativePath(path)))) return true;
  if (create) {
    for (const std::string& folder : FolderChain(path))
      if (!IsFolder(NativeAttributes(ToNativePath(folder)))) ::CreateDirectoryA(folder.c_str(), nullptr);
  }
  return false;
}
