// The settings schema: every section and key with its form and default, in reading order. Loader, saver and tests share
// this one table; a new setting is one row.
#pragma once

#include <array>
#include <cstddef>

namespace settings {

// In the order in which the values are read. The names are the keys, misspellings included.
enum class Setting {
  LocationbarHistory,
  ClearAutoComplete,
  TemporaryInternetFile,
  ClearAutoCompletePower,
  InternetHistory,
  UrlErrorLogs,
  IEHistory,
  ClearLockedIndex,
  Cookies,
  WinTempFileFolder,
  RecentDocumentList,
  RecycleBin,
  ScanDisk,
  FindFileFolderHistory,
  RunHistory,
  OpenSavedDialoge,
  RecentDocument,
  EraseRegistryFrame,
  NCookies,
  NTypedHistory,
  NClearMailHistry,
  NCache,
  Ocookies,
  OClean,
  OTypedUrl,
  chkShEnable,
  chkRbt,
  CHKieclose,
  ScheduleSecond,
  ScheduleHour,
  ScheduleDay,
  ScheduleMinutes,
  ScheduleMin,
  ScheduledTime,
  LoadStartup,
  Startup,
  Shutdown,
  bossKey,
  chkOptions,
  txtLevel,
  Message,
  Titile,
};

constexpr std::size_t kSettingCount = static_cast<std::size_t>(Setting::Titile) + 1;
constexpr std::size_t kItemFlagCount = static_cast<std::size_t>(Setting::OTypedUrl) + 1;

enum class SettingForm { Flag, Boolean, Number, Time, Text };

// Which procedure reads the value into its variable or control. The other readers and writers are the boss key button,
// the invisible-mode button with its warning, and the main window's load handler.
enum class SettingReader { ReadStoredSettings, LoadEraseSettings, Elsewhere };

constexpr int kNotSaved = 0;  // by SaveEraseSettings

struct SettingRow {
  Setting setting;
  const char* section;
  const char* key;
  SettingForm form;
  const char* defaultText;
  SettingReader reader;
  int saveOrder;  // position within SaveEraseSettings, from 1
};

extern const std::array<SettingRow, kSettingCount> kSchema;

const SettingRow& SchemaRow(Setting setting);

// The settings that SaveEraseSettings writes, in its order.
constexpr std::size_t kSavedCount = 39;
std::array<Setting, kSavedCount> SaveOrder();

}  // namespace settings
