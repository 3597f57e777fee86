// Shredding a file. A shred run takes one path after the other: the caller moves its progress bar, sets its texts and lets
// window events run between two calls; none runs inside one.
#pragma once

#include <string>

#include "platform/path.h"
#include "platform/runtime_error.h"
#include "shred/shred_run.h"

namespace shred {
using namespace platform;

// True when a file can be opened for reading; it is closed again at once. Never reports.
bool Validate(const Path& path);

// Whether there is a file, or a folder, of that path. What is missing from a medium that can be changed is out of reach: it
// may be on another one.
Presence PresenceOf(const Path& path);

// Overwrites the head of a file with the sequence of overwrite_sequence.h, whatever its length, and deletes it. Reports each
// failing statement as "modShred,DeleteFileShred", each item that cannot be written among them, and goes on with the next
// one: where the level is no number the file still gets the fixed runs, where it cannot be written it is still deleted. A
// read-only file, a link and a device are not written to. Gives the first failure, for a caller that tells of it.
//
// The failures of one file are one ReportBurst; a caller that holds one around its run makes the run's failures one.
RuntimeError DeleteFileShred(const Path& path, const std::string& levelText);

// The step of a shred run for one path: a file that Validate accepts loses its attributes and is shredded, any other is
// skipped. Gives what kept it from being shredded, if anything did.
RuntimeError ShredFile(const Path& path, const std::string& levelText);

}  // namespace shred
