#include "app/panel_navigation.h"

namespace app {

int NeighbourPanel(int panel, int steps, int count) { return ((panel + steps) % count + count) % count; }

}  // namespace app
