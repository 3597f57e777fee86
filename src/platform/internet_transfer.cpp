#include "platform/internet_transfer.h"

#include <utility>

#include "platform/runtime_error.h"
#include "platform/system_functions.h"

namespace platform {

void InternetTransfer::Cancel() {
  void* const request = std::exchange(request_, nullptr);
  if (request != nullptr) quietly([&] { late::InternetCloseHandle(request); });
}

}  // namespace platform
