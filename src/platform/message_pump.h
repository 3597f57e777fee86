// Letting window events run, from the main loop and from inside long work. There is one thread.
#pragma once

#include <cstdint>

#include "platform/win32.h"

namespace platform {

// A window's keyboard handling, asked before a message is dispatched; true when it took the message.
using MessageTranslator = bool (*)(MSG& message);
void SetMessageTranslator(MessageTranslator translator);

// Timers that call an address are not run: the program has none, and others could post any address. Tests have such timers.
inline bool TimerProceduresRunForTests = false;

// Processes what is in the queue and returns, after a second also with something left in it.
void DoEvents();

// DoEvents, but at most about thirty times a second: for loops whose single step is shorter than a look at the queue.
void DoEventsNowAndThen();

// How many times events have run: while it stays the same, nothing that an event does can have happened.
unsigned EventsRun();

// Sleeps until an event arrives or the milliseconds are over, then processes what is in the queue.
void WaitForEvents(std::uint32_t milliseconds);

// Waits that many whole seconds while window events run. Sleeps between events. `*cutShort`, when given, is looked at
// after each of them: the wait ends as soon as it is true.
void Pause(int seconds, const bool* cutShort = nullptr);

// Runs until the process ends.
void RunMessageLoop();

}  // namespace platform
