#include "platform/owned_windows.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

HWND Open(HWND owner) {
  return ::CreateWindowExA(0, "Static", "", WS_POPUP | WS_VISIBLE, 10, 10, 50, 50, owner, nullptr, nullptr, nullptr);
}

// A main window, a dialog over it, and a box over the dialog; each takes the input of the one below it.
class OpenWindows : public testing::Test {
 protected:
  OpenWindows() {
    ::EnableWindow(main, FALSE);
    ::EnableWindow(dialog, FALSE);
  }
  ~OpenWindows() override { ::DestroyWindow(main); }

  HWND main = Open(nullptr);
  HWND dialog = Open(main);
  HWND box = Open(dialog);
};

}  // namespace

TEST_F(OpenWindows, AreAllTakenOutOfSightAndBroughtBack) {
  ShowWindowsOver(main, false);
  EXPECT_FALSE(::IsWindowVisible(dialog));
  EXPECT_FALSE(::IsWindowVisible(box));
  EXPECT_TRUE(::IsWindowVisible(main)) << "it is not one that is over itself";
  ShowWindowsOver(main, true);
  EXPECT_TRUE(::IsWindowVisible(dialog));
  EXPECT_TRUE(::IsWindowVisible(box));
}

TEST_F(OpenWindows, AreTakenOutOfSightTwiceAndBroughtBackOnce) {
  ShowWindowsOver(main, false);
  ShowWindowsOver(main, false);
  ShowWindowsOver(main, true);
  EXPECT_TRUE(::IsWindowVisible(dialog));
  EXPECT_TRUE(::IsWindowVisible(box));
}

TEST_F(OpenWindows, LeaveHiddenWhatWasHiddenBefore) {
  const HWND kept = Open(main);
  ::ShowWindow(kept, SW_HIDE);
  ShowWindowsOver(main, false);
  ShowWindowsOver(main, true);
  EXPECT_FALSE(::IsWindowVisible(kept));
}

TEST_F(OpenWindows, HaveTheUppermostInFront) {
  EXPECT_EQ(WindowInFront(main), box);
  ::DestroyWindow(box);
  ::EnableWindow(dialog, TRUE);
  EXPECT_EQ(WindowInFront(main), dialog);
  ::DestroyWindow(dialog);
  ::EnableWindow(main, TRUE);
  EXPECT_EQ(WindowInFront(main), main);
}

TEST_F(OpenWindows, AreNotInFrontWhileTheyAreHidden) {
  ShowWindowsOver(main, false);
  EXPECT_EQ(WindowInFront(main), main);
  EXPECT_EQ(WindowInFront(nullptr), nullptr);
}
