#include "app/panel_navigation.h"

#include <gtest/gtest.h>

using namespace app;

TEST(PanelStatusText, SaysThatThePanelIsDisplayed) {
  EXPECT_EQ(PanelStatusText("Main Settings"), "Displaying Main Settings");
  EXPECT_EQ(PanelStatusText("Displaying Help"), "Displaying Displaying Help");
}

TEST(NeighbourPanel, GoesRoundThePanelsBothWays) {
  for (const int count : {1, 5, 6})
    for (int from = 0; from < count; ++from)
      for (int steps = -12; steps <= 12; ++steps)
        EXPECT_EQ(NeighbourPanel(from, steps, count), (from + steps + 12 * count) % count)
            << steps << " steps from panel " << from << " of " << count;
}
