#include "shred/shred_run.h"

namespace shred {

namespace {

std::string Outcome(int done, int count, const char* what, const char* how) {
  const std::string ofHowMany = done == count ? "" : std::to_string(done) + " of ";
  return ofHowMany + std::to_string(count) + " " + what + (count == 1 ? "" : "s") + how;
}

}  // namespace

void ShredRun::Add(const ShreddedFile& file) {
  ++steps_;
  if (file.wasThere && !file.isThere && !file.failed) ++shredded_;
}

std::string MessageBefore(const std::string& manualLevel) {
  return "   Shredding Files at level " + manualLevel + " may take some time.";
}

std::string SecondMessageBefore(const std::string& scheduledLevel) {
  return "Shredding Files at level " + scheduledLevel + " may take more time.";
}

std::string FilesShredded(int done, int count) { return Outcome(done, count, "file", " shredded."); }
std::string FoldersDeleted(int done, int count) { return Outcome(done, count, "folder", " deleted."); }

std::string FilesReady(int count) {
  return count == 0 ? "" : "There are " + std::to_string(count) + " files ready for deleting!";
}

}  // namespace shred
