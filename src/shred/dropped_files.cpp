#include "shred/dropped_files.h"

#include "platform/native_files.h"
#include "platform/system_functions.h"

namespace shred {
using namespace platform;

namespace {

template <class Char, class Query>
std::basic_string<Char> PathAt(HDROP drop, UINT index, const Query& query) {
  std::basic_string<Char> path(query(drop, index, nullptr, 0) + 1, Char());
  path.resize(query(drop, index, path.data(), static_cast<UINT>(path.size())));
  return path;
}

}  // namespace

DroppedFiles TakeDroppedFiles(WPARAM drop) {
  constexpr UINT kHowMany = 0xFFFFFFFF;
  const auto handle = reinterpret_cast<HDROP>(drop);
  DroppedFiles dropped{};
  late::DragQueryPoint(handle, &dropped.place);
  const UINT count = late::DragQueryFile(handle, kHowMany, nullptr, 0);
  for (UINT index = 0; index < count; ++index) {
    const std::string path = UsesWideNames() && late::DragQueryFileWide
                                 ? AnsiPath(ToNativePath(PathAt<wchar_t>(handle, index, late::DragQueryFileWide)))
                                 : PathAt<char>(handle, index, late::DragQueryFile);
    if (!path.empty()) dropped.paths.push_back(path);
  }
  late::DragFinish(handle);
  return dropped;
}

}  // namespace shred
