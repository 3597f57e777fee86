// A link takes the place of a folder in the middle of what deletes the files in it.
#pragma once

#include <string>

#include "exchange.h"
#include "file_calls.h"
#include "window_event.h"

// By the events that run next after the first deletion; they are due at once.
inline void ExchangeAfterTheFirstDeletion(const FileCalls& calls, const WindowEvents& events, const std::string& place) {
  calls.AfterEachDeletion([&calls, &events, place](const std::string&) {
    events.AtTheNext([place] { ExchangeForALink(place); });
    LetTheNextLookBeDue();
    calls.AfterEachDeletion(nullptr);  // this function goes with it
  });
}
