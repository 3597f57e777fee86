// Tells the user about a failed statement, and only while the machine is on line and the program on show; otherwise the
// error passes silently.
#pragma once

#include <string>

#include "platform/runtime_error.h"

namespace platform {

class InternetTransfer;

// The source tag is the module's name, a comma and the procedure's name. Shows a message box of the tag, the pending
// error's number and its description, run together without a separator as every report of the program reads, and clears the
// pending error.
void ReportError(const char* sourceTag);

// The same for an error that is at hand and not yet pending.
void ReportError(const char* sourceTag, const RuntimeError& error);

// While one exists, the failures that are reported are one burst: a file that is locked fails at each of its fourteen
// thousand writes. Each is reported on its own all the same; the burst asks once for all of them whether the machine is on
// line, and shows each message once. A burst inside another one is part of it.
class ReportBurst {
 public:
  ReportBurst();
  ~ReportBurst();
  ReportBurst(const ReportBurst&) = delete;
  ReportBurst& operator=(const ReportBurst&) = delete;

  // Failures reported since the outermost burst began: nothing else shows that each is.
  int ReportsForTests() const;
};

// While one exists, nothing is reported and nobody asks whether the machine is on line; ReportError clears the pending error
// and that is all. For a caller that shows its user nothing and calls a procedure that reports.
class NoReports {
 public:
  NoReports();
  ~NoReports();
  NoReports(const NoReports&) = delete;
  NoReports& operator=(const NoReports&) = delete;
};

// True when a well-known web page can be opened within seconds, at the first try. Lets window events run once. A build
// without an address of such a page is off line.
bool IsOnline();
bool OpensPage(const std::string& address);

// The transfer that is stopped before a message is shown; null while there is no main window.
void SetReporterTransfer(InternetTransfer* transfer);

// The trap of a procedure that reports and leaves: runs the body. After an error the body's remaining statements are
// skipped, the error is reported, and the caller leaves with its default result. Reports what the body itself raised and
// nothing else.
void reportAndLeave(const char* sourceTag, Statement body);

}  // namespace platform
