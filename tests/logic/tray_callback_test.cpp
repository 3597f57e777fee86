#include "app/tray_callback.h"

#include <gtest/gtest.h>

using namespace app;

namespace {

const char* NameOf(TrayAction action) {
  return action == TrayAction::None ? "nothing" : action == TrayAction::RestoreWindow ? "the window" : "the menu";
}

struct Row {
  std::uintptr_t wParam;
  std::uintptr_t lParam;
  bool isMove;  // the mouse is where the lParam would say
  TrayAction action;
  const char* what;
};

std::uintptr_t At(unsigned x, unsigned y) { return (static_cast<std::uintptr_t>(y) << 16) | x; }

// Over the icon, far from the window.
constexpr std::uintptr_t kElsewhere = 0x02EE0390;

const Row kRows[] = {
    {1, 514, false, TrayAction::RestoreWindow, "left button released on the icon"},
    {1, 515, false, TrayAction::RestoreWindow, "left double click on the icon"},
    {1, 517, false, TrayAction::PopupMenu, "right button released on the icon"},
    {1, 512, false, TrayAction::None, "mouse moved over the icon"},
    {1, 513, false, TrayAction::None, "left button pressed on the icon"},
    {1, 513, true, TrayAction::None, "mouse dragged along the topmost row"},
    {1, 516, false, TrayAction::None, "right button pressed on the icon"},
    {1, 518, false, TrayAction::None, "right double click on the icon"},
    {1, 0, false, TrayAction::None, "no mouse message"},
    {0, 514, false, TrayAction::None, "mouse moved, no button down"},
    {0, 515, false, TrayAction::None, "mouse moved, no button down"},
    {0, 517, false, TrayAction::None, "mouse moved, no button down"},
    {2, 517, false, TrayAction::None, "mouse moved with the right button down"},
    {16, 517, false, TrayAction::None, "mouse moved with the middle button down"},
    {5, 517, false, TrayAction::None, "mouse moved with Shift and the left button down"},
    {3, 514, false, TrayAction::None, "mouse moved with both buttons down"},
    {1, 514, true, TrayAction::None, "mouse dragged along the topmost row"},
    {1, 515, true, TrayAction::None, "mouse dragged along the topmost row"},
    {1, 517, true, TrayAction::None, "mouse dragged along the topmost row"},
    {1, At(514, 1), true, TrayAction::None, "mouse dragged along the second row"},
    {1, At(515, 1), true, TrayAction::None, "mouse dragged along the second row"},
    {1, At(517, 1), true, TrayAction::None, "mouse dragged along the second row"},
    {1, At(517, 300), false, TrayAction::None, "a place in the window"},
    {1, At(514, 0x8000), false, TrayAction::None, "a place above the window"},
};

}  // namespace

TEST(TrayActionOf, TellsTheIconsMessagesFromMovesOfTheMouse) {
  for (const Row& row : kRows)
    EXPECT_STREQ(NameOf(TrayActionOf(row.wParam, row.lParam, row.isMove ? row.lParam : kElsewhere)), NameOf(row.action))
        << row.what << ": wParam " << row.wParam << ", lParam " << row.lParam;
}

TEST(TrayActionOf, TakesNoRealMoveForTheIcons) {
  // A real move's wParam is the set of buttons and keys that are down; its 1 is the left button.
  for (std::uintptr_t keys = 0; keys < 128; ++keys)
    for (unsigned x = 505; x < 525; ++x)
      for (const unsigned y : {0u, 1u, 20u, 0xFFFFu})
        ASSERT_EQ(TrayActionOf(keys, At(x, y), At(x, y)), TrayAction::None) << "keys " << keys << " at " << x << ", " << y;
}
