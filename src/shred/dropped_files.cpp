#include "shred/dropped_files.h"

#include "platform/system_functions.h"
#include "platform/wide_system.h"

namespace shred {
using namespace platform;

namespace {

template <class Char, class Query>
std::basic_string<Char> TextAt(HDROP drop, UINT index, const Query& query) {
  std::basic_string<Char> text(query(drop, index, nullptr, 0) + 1, Char());
  text.resize(query(drop, index, text.data(), static_cast<UINT>(text.size())));
  return text;
}

}  // namespace

DroppedFiles TakeDroppedFiles(WPARAM drop) {
  constexpr UINT kHowMany = 0xFFFFFFFF;
  const auto handle = reinterpret_cast<HDROP>(drop);
  DroppedFiles dropped{};
  late::DragQueryPoint(handle, &dropped.place);
  const UINT count = late::DragQueryFile(handle, kHowMany, nullptr, 0);
  for (UINT index = 0; index < count; ++index) {
    const Path path = SpelledPath(UsesWideNames() ? TextAt<wchar_t>(handle, index, late::DragQueryFileWide)
                                                  : Widen(TextAt<char>(handle, index, late::DragQueryFile)));
    if (!path.IsEmpty()) dropped.paths.push_back(path);
  }
  late::DragFinish(handle);
  return dropped;
}

}  // namespace shred
