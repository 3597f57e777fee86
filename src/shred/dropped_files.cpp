#include "shred/dropped_files.h"

#include "platform/system_functions.h"

DroppedFiles TakeDroppedFiles(WPARAM drop) {
  constexpr UINT kHowMany = 0xFFFFFFFF;
  const auto handle = reinterpret_cast<HDROP>(drop);
  DroppedFiles dropped{};
  late::DragQueryPoint(handle, &dropped.place);
  const UINT count = late::DragQueryFile(handle, kHowMany, nullptr, 0);
  for (UINT index = 0; index < count; ++index) {
    std::string path(late::DragQueryFile(handle, index, nullptr, 0) + 1, '\0');
    path.resize(late::DragQueryFile(handle, index, path.data(), static_cast<UINT>(path.size())));
    dropped.paths.push_back(path);
  }
  late::DragFinish(handle);
  return dropped;
}
