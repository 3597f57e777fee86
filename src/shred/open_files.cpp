#include "shred/open_files.h"

#include <cstddef>
#include <string>

#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/system_functions.h"
#include "platform/wide_system.h"
#include "shred/dialog_answer.h"

namespace shred {
using namespace platform;

namespace {

constexpr DWORD kAnswerSize = 2048;

// Room after the end that the dialog is told of, which not every system's dialog keeps to; as much as its box for the name
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
  CurrentFolder() : text_(PathOf(Wide<".">()).Shown()) {}
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;
  ~CurrentFolder() {
    quietly([this] {
      UsesWideNames() ? late::SetCurrentDirectoryWide(text_.c_str()) : ::SetCurrentDirectoryA(Narrow(text_).c_str());
    });
  }

 private:
  WideText text_;
};

// What the dialog's buffer holds; empty when it was cancelled.
template <class Char, class Record>
std::basic_string<Char> Ask(HWND owner, const Char* filter, const LateFunction<BOOL(WINAPI*)(Record*)>& show) {
  std::basic_string<Char> answer(kAnswerSize + kSlack, Char());
  Record dialog{};
  dialog.lStructSize = kRecordSize;
  dialog.hwndOwner = owner;
  dialog.lpstrFilter = filter;
  dialog.nFilterIndex = 1;
  dialog.lpstrFile = answer.data();
  dialog.nMaxFile = kAnswerSize;
  dialog.Flags = kFlags;
  if (!show(&dialog)) {
    if (const DWORD error = late::CommDlgExtendedError()) RaiseDialogError(error);
    return {};
  }
  answer.resize(kAnswerSize);
  return answer;
}

}  // namespace

std::vector<Path> AskForFiles(HWND owner) {
  const CurrentFolder staysTheSame;
  const WideText answer = UsesWideNames() ? Ask(owner, L"All Files\0*.*\0", late::GetOpenFileNameWide)
                                          : Widen(Ask(owner, "All Files\0*.*\0", late::GetOpenFileName));
  // Not every system's dialog tells when it cuts its answer off.
  if (!answer.empty() && !IsWholeAnswer(answer)) RaiseDialogError(kBufferTooSmall);
  return SplitDialogAnswer(answer);
}

}  // namespace shred
