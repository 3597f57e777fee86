// The main window's internet-transfer control (it has two, Inet1 and Inet2). No feature starts a transfer; the error
// reporter stops a pending one before it shows a message.
#pragma once

namespace platform {

class InternetTransfer {
 public:
  InternetTransfer() = default;
  InternetTransfer(const InternetTransfer&) = delete;
  InternetTransfer& operator=(const InternetTransfer&) = delete;
  ~InternetTransfer() { Cancel(); }

  // Takes over an open request of wininet.
  void Adopt(void* request) { Cancel(), request_ = request; }

  // Closes the request, which ends the transfer.
  void Cancel();
  bool StillExecuting() const { return request_ != nullptr; }

 private:
  void* request_ = nullptr;
};

}  // namespace platform
