// The five panels of the main window. They stand in the same place; one of them is shown.
#pragma once

#include "app/fraHelp.h"
#include "app/fraMain.h"
#include "app/panel_navigation.h"
#include "automation/fraScheduleManager.h"
#include "erase/fraClean.h"
#include "shred/fraShred.h"

namespace app {
using namespace platform;

struct Panels {
  Panels(MainWindow& window, erase::EraseRunHost& host)
      : main(window), clean(host), shred(window), scheduleManager(window) {}

  fraMain main;
  erase::fraClean clean;
  shred::fraShred shred;
  automation::fraScheduleManager scheduleManager;
  fraHelp help;
};

}  // namespace app
