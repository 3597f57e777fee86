#include "platform/ErroHandle.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "platform/addresses.h"
#include "platform/app_title.h"
#include "platform/internet_transfer.h"
#include "platform/message_box.h"
#include "platform/message_pump.h"
#include "platform/system_functions.h"

namespace platform {

namespace {

// INTERNET_FLAG_RELOAD, NO_CACHE_WRITE, NO_COOKIES, NO_UI: the probe of a privacy cleaner leaves no page in the cache, and a
// page that lies there does not make the machine look on line. NO_AUTO_REDIRECT, NO_AUTH: it asks nobody else and logs on
// nowhere.
constexpr DWORD kLeaveNoTrace = 0x842C0200;

// The window stands still while the page is asked for. The system's own patience is minutes long.
struct Patience {
  DWORD option;
  DWORD value;
};
constexpr Patience kPatience[] = {
    {2, 3000},  // INTERNET_OPTION_CONNECT_TIMEOUT, milliseconds
    {3, 1},     // INTERNET_OPTION_CONNECT_RETRIES
    {5, 3000},  // INTERNET_OPTION_SEND_TIMEOUT
    {6, 3000},  // INTERNET_OPTION_RECEIVE_TIMEOUT
};

InternetTransfer* mainTransfer = nullptr;

// The burst that goes on while `depth` is above 0.
struct Burst {
  int depth = 0;
  int reports = 0;
  std::optional<bool> online;
  std::vector<std::string> shown;
};
Burst burst;

int noReports = 0;  // how many there are

bool IsToBeShown(const std::string& text) {
  if (burst.depth == 0) return IsOnline();
  ++burst.reports;
  if (!burst.online) burst.online = IsOnline();
  if (!*burst.online || std::find(burst.shown.begin(), burst.shown.end(), text) != burst.shown.end()) return false;
  burst.shown.push_back(text);
  return true;
}

void StopTransfer() {
  if (mainTransfer == nullptr) return;
  mainTransfer->Cancel();
  while (mainTransfer->StillExecuting()) WaitForEvents(50);
}

}  // namespace

void SetReporterTransfer(InternetTransfer* transfer) { mainTransfer = transfer; }

void ReportError(const char* sourceTag) {
  quietly([&] {
    if (Err.Number() == 0 || noReports > 0 || !MayShowMessages()) return;
    const std::string text = (sourceTag + std::to_string(Err.Number())).append(Err.Description());
    if (!IsToBeShown(text)) return;
    StopTransfer();
    ShowMessage(text, MB_OK);
  });
  Err.Clear();
}

void ReportError(const char* sourceTag, const RuntimeError& error) {
  Err.Set(error);
  ReportError(sourceTag);
}

void reportAndLeave(const char* sourceTag, Statement body) {
  if (const RuntimeError failure = failureOf(body)) ReportError(sourceTag, failure);
}

ReportBurst::ReportBurst() {
  if (burst.depth == 0) burst = {};
  ++burst.depth;
}

ReportBurst::~ReportBurst() { --burst.depth; }

int ReportBurst::ReportsForTests() const { return burst.reports; }

NoReports::NoReports() { ++noReports; }

NoReports::~NoReports() { --noReports; }

bool IsOnline() { return OpensPage(kProbeAddress); }

bool OpensPage(const std::string& address) {
  if (address.empty()) return false;
  bool online = false;
  void* session = nullptr;
  void* page = nullptr;
  quietly([&] {
    session = late::InternetOpen(AppTitle.c_str(), 0 /* INTERNET_OPEN_TYPE_PRECONFIG */, nullptr, nullptr, 0);
    DoEvents();
    if (session == nullptr) return;
    for (Patience patience : kPatience)
      late::InternetSetOption(session, patience.option, &patience.value, sizeof patience.value);
    page = late::InternetOpenUrl(session, address.c_str(), nullptr, 0, kLeaveNoTrace, 0);
    online = page != nullptr;
  });
  quietly([&] {
    if (page != nullptr) late::InternetCloseHandle(page);
    if (session != nullptr) late::InternetCloseHandle(session);
  });
  return online;
}

}  // namespace platform
