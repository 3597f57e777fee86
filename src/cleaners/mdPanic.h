// Asking open browser windows to close before an erase: they hold files that the cleaners want. None of this waits for a
// browser's process to end, and nothing is reported.
#pragma once

namespace cleaners {

// Asks the windows of class "IEFrame" to close, one after another, until none is left. A window that refuses is asked again
// ten times a second for as long as it exists; window events run meanwhile, and the waiting costs no time of the processor.
// One that cannot even be asked, for example an administrator's, is not waited for.
void CloseBrowserFrames();

// Asks the first top-level window whose title holds the text, case included, to close.
void CloseWindowByTitle(const char* title);

// Posts the taskbar its command 419, which minimises every window; harmless without a taskbar.
void MinimiseAllWindows();

}  // namespace cleaners
