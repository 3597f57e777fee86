#include "platform/message_pump.h"

#include "platform/tick_count.h"

namespace platform {

namespace {

MessageTranslator messageTranslator = nullptr;
DWORD lastLook = 0;
unsigned looks = 0;

// Long enough that the look costs a walk nothing, short enough that a click is answered at once.
constexpr DWORD kLookEvery = 30;

// On a slow machine a timer may be due again whenever its message has been worked off, and the queue never gets empty: what
// called for the look must go on all the same. What is left is worked off at the next look.
constexpr DWORD kLongestLook = 1000;

// A timer message with an address in it makes old systems call that address, whoever posted the message. All timers of the
// program are windows' timers, without one.
bool CallsAnAddress(const MSG& message) { return message.message == WM_TIMER && message.lParam != 0; }

void Process(MSG& message) {
  if (CallsAnAddress(message) && !TimerProceduresRunForTests) return;
  if (messageTranslator != nullptr && messageTranslator(message)) return;
  ::TranslateMessage(&message);
  ::DispatchMessageA(&message);
}

}  // namespace

void SetMessageTranslator(MessageTranslator translator) { messageTranslator = translator; }

void DoEvents() {
  const DWORD begun = ::GetTickCount();
  MSG message;
  while (::GetTickCount() - begun < kLongestLook && ::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) Process(message);
  lastLook = ::GetTickCount();
  ++looks;
}

unsigned EventsRun() { return looks; }

void DoEventsNowAndThen() {
  if (::GetTickCount() - lastLook >= kLookEvery) DoEvents();
}

void WaitForEvents(std::uint32_t milliseconds) {
  ::MsgWaitForMultipleObjects(0, nullptr, FALSE, milliseconds, QS_ALLINPUT);
  DoEvents();
}

void Pause(int seconds, const bool* cutShort) {
  const std::uint32_t end = ::GetTickCount() + static_cast<std::uint32_t>(seconds) * 1000u;
  DoEvents();  // the wait below wakes for new events only
  for (;;) {
    const std::int32_t left = MillisecondsUntil(end, ::GetTickCount());
    if (left <= 0 || (cutShort != nullptr && *cutShort)) return;
    WaitForEvents(static_cast<std::uint32_t>(left));
  }
}

void RunMessageLoop() {
  MSG message;
  while (::GetMessageA(&message, nullptr, 0, 0) > 0) Process(message);
}

}  // namespace platform
