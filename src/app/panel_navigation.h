// The five panels and what choosing one says in the status bar.
#pragma once

#include <string>

namespace app {

enum class Panel { MainSettings, Erase, SecureDeletion, AdvanceSettings, Help };

constexpr int kPanelCount = 5;

// "Displaying " and the button's caption. The help panel says "Displaying Displaying Help"; the doubled word is meant.
std::string PanelStatusText(Panel panel, const std::string& buttonCaption);

// The panel `steps` further on, round the end.
Panel NeighbourPanel(Panel panel, int steps);

}  // namespace app
