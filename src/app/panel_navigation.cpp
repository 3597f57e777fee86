#include "app/panel_navigation.h"

namespace app {

std::string PanelStatusText(Panel panel, const std::string& buttonCaption) {
  return "Displaying " + (panel == Panel::Help ? std::string("Displaying Help") : buttonCaption);
}

Panel NeighbourPanel(Panel panel, int steps) {
  return static_cast<Panel>(((static_cast<int>(panel) + steps) % kPanelCount + kPanelCount) % kPanelCount);
}

}  // namespace app
