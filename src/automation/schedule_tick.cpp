#include "automation/schedule_tick.h"

#include <limits>

#include "platform/plain_text.h"
#include "platform/text_value.h"

namespace automation {
using namespace platform;

namespace {

constexpr int kTicksAnHour = 60;

std::string TwoDigits(int number) {
  return std::string(1, static_cast<char>('0' + number / 10)) + static_cast<char>('0' + number % 10);
}

// In this order: the first that applies decides.
bool IsModeDue(std::int16_t tickCount, const ScheduleFacts& facts) {
  if (facts.hourlyFlag == "1" && tickCount >= kTicksAnHour) return true;
  if (facts.now == facts.picked && facts.dailyChosen) return true;
  return NumberAtHead(facts.minutesText) <= tickCount && facts.minutesFlag == "1";
}

}  // namespace

const char* PickerFormat(const DayHalves& designators) {
  return designators.am.empty() && designators.pm.empty() ? "HH:mm" : "hh:mm tt";
}

std::string TimeText(int hour, int minute, const DayHalves& designators) {
  const int shown = hour % 12 == 0 ? 12 : hour % 12;
  return TwoDigits(shown) + ":" + TwoDigits(minute) + " " + (hour < 12 ? designators.am : designators.pm);
}

bool IsEraseDue(std::int16_t& tickCount, const ScheduleFacts& facts) {
  if (!facts.enabled) return false;
  if (tickCount < std::numeric_limits<std::int16_t>::max()) ++tickCount;
  const bool due = !facts.somethingAsked && IsModeDue(tickCount, facts);
  if (due) tickCount = 0;
  return due;
}

}  // namespace automation
