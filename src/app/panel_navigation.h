// Going from panel to panel.
#pragma once

#include <string>

namespace app {

// What the status bar tells of the panel on show.
inline std::string PanelStatusText(const std::string& name) { return "Displaying " + name; }

// The panel `steps` further on of `count`, round the end.
int NeighbourPanel(int panel, int steps, int count);

}  // namespace app
