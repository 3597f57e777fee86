#include <gtest/gtest.h>

#include <cstring>
#include <thread>

#include "cleaners/modCleanItems.h"
#include "log_recorder.h"
#include "platform/main_window.h"
#include "platform/runtime_error.h"

using namespace cleaners;
using namespace platform;

namespace {

HWND MakeWindow() { return ::CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr); }

class ClearClipboardTest : public testing::Test {
 protected:
  void SetUp() override { MainWindowHandle = MakeWindow(); }
  void TearDown() override {
    ::DestroyWindow(MainWindowHandle);
    MainWindowHandle = nullptr;
  }

  LogRecorder log;
};

void Copy(const std::string& text) {
  const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
  std::strcpy(static_cast<char*>(::GlobalLock(memory)), text.c_str());
  ::GlobalUnlock(memory);
  ASSERT_TRUE(::OpenClipboard(MainWindowHandle));
  ::EmptyClipboard();
  ::SetClipboardData(CF_TEXT, memory);
  ::CloseClipboard();
}

bool AnotherThreadCanOpenTheClipboard() {
  bool opened = false;
  std::thread([&opened] {
    opened = ::OpenClipboard(MakeWindow()) != 0;
    if (opened) ::CloseClipboard();
  }).join();
  return opened;
}

// Another program's window that holds the clipboard open while the object lives.
class Holder {
 public:
  Holder() : thread_([this] { Hold(); }) { ::WaitForSingleObject(held_, INFINITE); }
  ~Holder() {
    ::SetEvent(release_);
    thread_.join();
  }
  HWND Window() const { return window_; }

 private:
  void Hold() {
    window_ = MakeWindow();
    ::OpenClipboard(window_);
    ::SetEvent(held_);
    ::WaitForSingleObject(release_, INFINITE);
    ::CloseClipboard();
    ::DestroyWindow(window_);
  }

  HWND window_ = nullptr;
  HANDLE held_ = ::CreateEventA(nullptr, FALSE, FALSE, nullptr);
  HANDLE release_ = ::CreateEventA(nullptr, FALSE, FALSE, nullptr);
  std::thread thread_;
};

// Another program's window that has put something into the clipboard and hangs while the object lives.
class HangingOwner {
 public:
  HangingOwner() : thread_([this] { Own(); }) { ::WaitForSingleObject(owned_, INFINITE); }
  ~HangingOwner() {
    ::SetEvent(release_);
    thread_.join();
  }

 private:
  void Own() {
    const HWND window = MakeWindow();
    ::OpenClipboard(window);
    ::EmptyClipboard();
    ::SetClipboardData(CF_TEXT, ::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, 16));
    ::CloseClipboard();
    ::SetEvent(owned_);
    ::WaitForSingleObject(release_, INFINITE);
    ::DestroyWindow(window);
  }

  HANDLE owned_ = ::CreateEventA(nullptr, FALSE, FALSE, nullptr);
  HANDLE release_ = ::CreateEventA(nullptr, FALSE, FALSE, nullptr);
  std::thread thread_;
};

const LogLines kCleared = {{"Clipboard Cleared", "(stamp)"}};

}  // namespace

TEST_F(ClearClipboardTest, TakesTheTextAway) {
  Copy("a password");
  ASSERT_TRUE(::IsClipboardFormatAvailable(CF_TEXT));
  ClearClipboard();
  EXPECT_FALSE(::IsClipboardFormatAvailable(CF_TEXT));
  EXPECT_EQ(log.Stamped(), kCleared);
}

TEST_F(ClearClipboardTest, TakesEveryFormatAway) {
  ASSERT_TRUE(::OpenClipboard(MainWindowHandle));
  ::EmptyClipboard();
  ::SetClipboardData(CF_BITMAP, ::CreateBitmap(4, 4, 1, 1, nullptr));
  ::SetClipboardData(::RegisterClipboardFormatA("Rich Text Format"), ::GlobalAlloc(GMEM_MOVEABLE, 16));
  ::SetClipboardData(CF_UNICODETEXT, nullptr);  // promised, to be made when asked for
  ::CloseClipboard();
  ASSERT_GE(::CountClipboardFormats(), 3);
  ClearClipboard();
  EXPECT_EQ(::CountClipboardFormats(), 0);
}

TEST_F(ClearClipboardTest, ClearsAnEmptyClipboard) {
  ClearClipboard();
  ClearClipboard();
  LogLines twice = kCleared;
  twice.push_back(kCleared[0]);
  EXPECT_EQ(log.Stamped(), twice);
}

TEST_F(ClearClipboardTest, LeavesTheClipboardClosed) {
  Copy("text");
  ClearClipboard();
  EXPECT_EQ(::GetOpenClipboardWindow(), nullptr);
  EXPECT_TRUE(AnotherThreadCanOpenTheClipboard());
}

TEST_F(ClearClipboardTest, IsTerminatedWhileAnotherWindowHoldsTheClipboard) {
  Copy("a password");
  {
    const Holder holder;
    ASSERT_EQ(::GetOpenClipboardWindow(), holder.Window());
    ClearClipboard();
    EXPECT_EQ(log.Lines(), (LogLines{{"Clipboard ", "Terminated"}}));
    EXPECT_EQ(::GetOpenClipboardWindow(), holder.Window()) << "the other window keeps it";
  }
  EXPECT_TRUE(::IsClipboardFormatAvailable(CF_TEXT));
  EXPECT_TRUE(AnotherThreadCanOpenTheClipboard()) << "it is not held by the program";
  ClearClipboard();
  EXPECT_FALSE(::IsClipboardFormatAvailable(CF_TEXT)) << "and a second run clears it";
}

TEST_F(ClearClipboardTest, IsTerminatedAfterASecondWhereItsOwnerHangs) {
  {
    const HangingOwner owner;
    ClearClipboard();
    EXPECT_EQ(log.Lines(), (LogLines{{"Clipboard ", "Terminated"}})) << "it waited for the owner, or did not ask it";
    EXPECT_TRUE(AnotherThreadCanOpenTheClipboard());
  }
  ClearClipboard();
  EXPECT_FALSE(::IsClipboardFormatAvailable(CF_TEXT)) << "the next run clears it";
}

TEST_F(ClearClipboardTest, NeedsNoMainWindow) {
  Copy("a password");
  const HWND window = std::exchange(MainWindowHandle, nullptr);
  ClearClipboard();
  MainWindowHandle = window;
  EXPECT_FALSE(::IsClipboardFormatAvailable(CF_TEXT));
  EXPECT_EQ(log.Stamped(), kCleared);
}
