#include "cleaners/clean_log.h"

#include <string>

#include "platform/wide_system.h"
#include "platform/win32.h"

namespace cleaners {

WideText ResultStamp() {
  char date[128] = "";
  char time[128] = "";
  ::GetDateFormatA(LOCALE_USER_DEFAULT, DATE_LONGDATE, nullptr, nullptr, date, sizeof date);
  ::GetTimeFormatA(LOCALE_USER_DEFAULT, 0, nullptr, nullptr, time, sizeof time);
  return Widen(std::string(date) + " @ " + time);
}

}  // namespace cleaners
