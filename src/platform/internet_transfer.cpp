#include "platform/internet_transfer.h"

#include <utility>

#include "platform/system_functions.h"

void InternetTransfer::Cancel() {
  void* const request = std::exchange(request_, nullptr);
  if (request != nullptr) resumeNext([&] { late::InternetCloseHandle(request); });
}
