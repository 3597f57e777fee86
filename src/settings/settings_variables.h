// The shared settings variables: one text per key, filled at start-up, kept equal to the controls by their Click
// handlers, written back by SaveEraseSettings. They let the run and the scheduler read the choices without a control.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "settings/schema.h"

namespace settings {

struct SettingsVariables {
  std::string& operator[](Setting setting) { return text[static_cast<std::size_t>(setting)]; }
  const std::string& operator[](Setting setting) const { return text[static_cast<std::size_t>(setting)]; }

  std::array<std::string, kSettingCount> text;
  bool CloseBrowsers = false;          // "CHKieclose"
  std::int32_t BossKeyCode = 121;      // a virtual-key code; F10 until the stored one is read
  std::int16_t ScheduleTickCount = 0;  // minutes; 0 whenever the settings are read
};

// Module-level, alive for the life of the process.
inline SettingsVariables Settings;

}  // namespace settings
