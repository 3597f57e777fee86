#include "app/panel_navigation.h"

#include <gtest/gtest.h>

using namespace app;

TEST(PanelStatusText, NamesThePanelByItsButton) {
  EXPECT_EQ(PanelStatusText(Panel::MainSettings, "Main Settings"), "Displaying Main Settings");
  EXPECT_EQ(PanelStatusText(Panel::Erase, "Erase"), "Displaying Erase");
  EXPECT_EQ(PanelStatusText(Panel::SecureDeletion, "Secure Deletion"), "Displaying Secure Deletion");
  EXPECT_EQ(PanelStatusText(Panel::AdvanceSettings, "Advance Settings"), "Displaying Advance Settings");
}

TEST(PanelStatusText, DoublesTheWordForTheHelpPanel) {
  EXPECT_EQ(PanelStatusText(Panel::Help, "Help"), "Displaying Displaying Help");
  EXPECT_EQ(PanelStatusText(Panel::Help, "another caption"), "Displaying Displaying Help");
}

TEST(NeighbourPanel, GoesRoundTheFivePanelsBothWays) {
  const Panel order[] = {Panel::MainSettings, Panel::Erase, Panel::SecureDeletion, Panel::AdvanceSettings, Panel::Help};
  ASSERT_EQ(kPanelCount, 5);
  for (int from = 0; from < 5; ++from)
    for (int steps = -12; steps <= 12; ++steps)
      EXPECT_EQ(static_cast<int>(NeighbourPanel(order[from], steps)), static_cast<int>(order[(from + steps + 20) % 5]))
          << steps << " steps from panel " << from;
}
