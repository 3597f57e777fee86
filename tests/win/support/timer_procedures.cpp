// Part of every test program: its timers call procedures of its own, which the program under test does not let happen.
#include "platform/message_pump.h"

namespace {
[[maybe_unused]] const bool allowed = platform::TimerProceduresRunForTests = true;
}
