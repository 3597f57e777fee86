// The main window's internet-transfer control (it has two, Inet1 and Inet2). No feature starts a transfer; the error
// reporter stops a pending one before it shows a message.
#pragma once

namespace platform {

class InternetTransfer {
 public:
  // By default none is under way; an open request of wininet otherwise, which it takes over.
  explicit InternetTransfer(void* request = nullptr) : request_(request) {}
  InternetTransfer(const InternetTransfer&) = delete;
  InternetTransfer& operator=(const InternetTransfer&) = delete;
  ~InternetTransfer() { Cancel(); }

  // Closes the request, which ends the transfer.
  void Cancel();
  bool StillExecuting() const { return request_ != nullptr; }

 private:
  void* request_;
};

}  // namespace platform
