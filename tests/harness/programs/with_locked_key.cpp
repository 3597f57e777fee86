// Runs a program while a registry key of the current user gives no more than some access, and ends with its exit status.
//
//   with_locked_key.exe KEY ACCESS PROGRAM [ARGUMENT...]
#include "../../win/support/locked_key.h"

#include <process.h>
#include <cstdlib>

int main(int count, char** arguments) {
  if (count < 4) return 99;
  const LockedKey key(arguments[1], std::strtoul(arguments[2], nullptr, 0));
  return static_cast<int>(_spawnv(_P_WAIT, arguments[3], arguments + 3));
}
