#include "shred/open_files.h"

#include <string_view>

#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/system_functions.h"
#include "shred/dialog_answer.h"

namespace shred {
using namespace platform;

namespace {

constexpr DWORD kAnswerSize = 2048;

// Room behind the end that the dialog is told of, which not every system's dialog keeps to; as much as its box for the name
// holds.
constexpr std::size_t kSlack = 0x10000;
constexpr DWORD kFlags = OFN_ALLOWMULTISELECT | OFN_EXPLORER;
static_assert(kFlags == 0x80200);

// The first version's record, the one that every system takes.
constexpr DWORD kRecordSize = 76;

// The dialog's errors (cderr.h) as the run-time errors of the dialog control.
constexpr DWORD kBufferTooSmall = 0x3003;
constexpr int kBufferTooSmallError = 20476;

[[noreturn]] void RaiseDialogError(DWORD error) {
  if (error == kBufferTooSmall)
    throw RuntimeError{kBufferTooSmallError, "The buffer at which the member lpstrFile points is too small"};
  Raise(kInvalidCall);
}

// The dialog makes the folder that was looked at last the current one.
class CurrentFolder {
 public:
  CurrentFolder() { ::GetCurrentDirectoryA(sizeof path_, path_); }
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;
  ~CurrentFolder() { ::SetCurrentDirectoryA(path_); }

 private:
  char path_[MAX_PATH] = "";
};

template <class Char, class Record>
std::vector<std::basic_string<Char>> Ask(HWND owner, const Char* filter, const LateFunction<BOOL(WINAPI*)(Record*)>& show) {
  std::vector<Char> answer(kAnswerSize + kSlack);
  Record dialog{};
  dialog.lStructSize = kRecordSize;
  dialog.hwndOwner = owner;
  dialog.lpstrFilter = filter;
  dialog.nFilterIndex = 1;
  dialog.lpstrFile = answer.data();
  dialog.nMaxFile = kAnswerSize;
  dialog.Flags = kFlags;
  if (show(&dialog)) {
    const std::basic_string_view<Char> buffer(answer.data(), kAnswerSize);
    // Not every system's dialog says so when it cuts its answer off.
    if (!IsWholeAnswer(buffer)) RaiseDialogError(kBufferTooSmall);
    return SplitDialogAnswer(buffer);
  }
  const DWORD error = late::CommDlgExtendedError();
  if (error != 0) RaiseDialogError(error);
  return {};
}

}  // namespace

std::vector<std::string> AskForFiles(HWND owner) {
  const CurrentFolder staysTheSame;
  if (!UsesWideNames() || !late::GetOpenFileNameWide) return Ask(owner, "All Files\0*.*\0", late::GetOpenFileName);
  std::vector<std::string> paths;
  for (const std::wstring& chosen : Ask(owner, L"All Files\0*.*\0", late::GetOpenFileNameWide)) {
    const std::string path = AnsiPath(ToNativePath(chosen));
    if (!path.empty()) paths.push_back(path);
  }
  return paths;
}

}  // namespace shred
