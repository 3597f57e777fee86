// Asks for a stop from another thread as soon as something changes in a registry key: for a loop that lets no window events
// run. On a busy machine the stop may come too late, so a test tries until it does not.
#pragma once

#include <thread>
#include <utility>

#include "platform/handles.h"
#include "platform/stop_request.h"

using namespace platform;

class StopAtTheFirstChange {
 public:
  // `key` is opened for KEY_NOTIFY.
  explicit StopAtTheFirstChange(UniqueKey key) : key_(std::move(key)) {
    ::RegNotifyChangeKeyValue(key_.get(), FALSE, REG_NOTIFY_CHANGE_LAST_SET, changed_, TRUE);
    thread_ = std::thread([this] {
      const HANDLE either[] = {changed_, over_};
      if (::WaitForMultipleObjects(2, either, FALSE, INFINITE) == WAIT_OBJECT_0) StopErase = true;
    });
  }
  StopAtTheFirstChange(const StopAtTheFirstChange&) = delete;
  StopAtTheFirstChange& operator=(const StopAtTheFirstChange&) = delete;
  ~StopAtTheFirstChange() {
    ::SetEvent(over_);
    thread_.join();
    ::CloseHandle(changed_);
    ::CloseHandle(over_);
  }

 private:
  UniqueKey key_;
  HANDLE changed_ = ::CreateEventA(nullptr, TRUE, FALSE, nullptr);
  HANDLE over_ = ::CreateEventA(nullptr, TRUE, FALSE, nullptr);
  std::thread thread_;
};
