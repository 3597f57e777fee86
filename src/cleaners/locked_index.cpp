#include "cleaners/locked_index.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "platform/message_pump.h"
#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "platform/stop_request.h"
#include "platform/system_error.h"
#include "platform/whole_file.h"

namespace cleaners {
using namespace platform;

namespace {

constexpr std::size_t kBlock = 0x10000;  // bytes

// In its place and without cutting it first, so that the blanks lie where the traces lay. The blanks are on the disk when
// the file is closed.
void FillWithBlanks(const Path& path, std::uint64_t length) {
  const UniqueFile file = NativeOpenForWriting(path);
  if (!file) RaiseLastError();
  const std::string blanks(static_cast<std::size_t>(std::min<std::uint64_t>(length, kBlock)), ' ');
  for (std::uint64_t left = length; left > 0;) {
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(left, blanks.size()));
    WriteOrRaise(file.get(), blanks.data(), count);
    left -= count;
    DoEventsNowAndThen();
  }
  if (!::FlushFileBuffers(file.get())) RaiseLastError();
}

void OverwriteIndexFile(SpecialFolder folder, WideView name) {
  quietly([&] {
    const Path path = FindSpecialFolder(folder) / name;
    if (IsLink(NativeAttributes(path))) return;  // the blanks would fill another file
    const std::uint64_t length = FileLen(path);
    if (!StopErase) FillWithBlanks(path, length);
  });
}

}  // namespace

void ClearLockedIndexFiles() {
  OverwriteIndexFile(kCookiesFolder, Wide<"index.dat">());
  OverwriteIndexFile(kHistoryFolder, Wide<"index.dat">());
  OverwriteIndexFile(kHistoryFolder, Wide<"history.ie5\\index.dat">());
}

}  // namespace cleaners
