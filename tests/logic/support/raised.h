// The run-time error that a statement raises, as a value that a table can hold.
#pragma once

#include "platform/runtime_error.h"

using namespace platform;

// The number of the error; 0 when the statement raises none.
template <class Statement>
int RaisedBy(Statement&& statement) {
  try {
    statement();
  } catch (const RuntimeError& error) {
    return error.number;
  }
  return 0;
}
