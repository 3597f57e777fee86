#include "cleaners/locked_index.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/file_itself.h"
#include "platform/handles.h"
#include "platform/message_pump.h"
#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "platform/stop_request.h"
#include "platform/told_of_files.h"
#include "platform/whole_file.h"

namespace cleaners {
using namespace platform;

namespace {

constexpr std::size_t kBlock = 0x10000;  // bytes

// In its place and without cutting it first, so that the blanks lie where the traces lay. The blanks are on the disk when
// the file is closed. A stop ends it after the block that is being written.
void FillWithBlanks(HANDLE file, std::uint64_t length) {
  const std::string blanks(static_cast<std::size_t>(std::min<std::uint64_t>(length, kBlock)), ' ');
  for (std::uint64_t left = length; left > 0 && !StopErase;) {
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(left, blanks.size()));
    WriteOrRaise(file, blanks.data(), count);
    left -= count;
    DoEventsNowAndThen();
  }
  if (!::FlushFileBuffers(file)) RaiseLastError();
}

// The file that has been opened is judged, and no other one gets in as long as it is open.
void OverwriteIndexFile(SpecialFolder folder, WideView name) {
  Path path;
  const RuntimeError failure = failureOf([&] {
    path = FindSpecialFolder(folder) / name;
    if (StopErase) return;
    // The blanks would fill another file.
    if (IsLink(NativeAttributes(path))) return TellStayed(path, Why::Link);
    const UniqueFile file = OpenItself(path, GENERIC_WRITE, 0);
    BY_HANDLE_FILE_INFORMATION facts;
    if (!file || !::GetFileInformationByHandle(file.get(), &facts)) RaiseLastError();
    // What has a second name is somebody else's as well. Blanks would take the room that the gaps of a sparse file only
    // pretend to take.
    if (facts.nNumberOfLinks > 1 ||
        (facts.dwFileAttributes & (FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_SPARSE_FILE)) != 0)
      return TellStayed(path, Why::SecondName);
    const std::uint64_t length = static_cast<std::uint64_t>(facts.nFileSizeHigh) << 32 | facts.nFileSizeLow;
    FillWithBlanks(file.get(), length);
    if (!StopErase) TellErasedWith(Trace::IndexFile, length);
  });
  if (failure && !path.IsEmpty()) Told(false, Trace::IndexFile, path);  // the reason is still the last error
}

}  // namespace

void ClearLockedIndexFiles() {
  OverwriteIndexFile(kCookiesFolder, Wide<"index.dat">());
  OverwriteIndexFile(kHistoryFolder, Wide<"index.dat">());
  OverwriteIndexFile(kHistoryFolder, Wide<"history.ie5\\index.dat">());
}

}  // namespace cleaners
