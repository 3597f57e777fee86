#include "shred/shred_run.h"

namespace shred {
using cleaners::FolderRefusal;

namespace {

std::string Outcome(int done, int count, const char* what, const char* how) {
  const std::string ofHowMany = done == count ? "" : std::to_string(done) + " of ";
  return ofHowMany + std::to_string(count) + " " + what + (count == 1 ? "" : "s") + how;
}

}  // namespace

void ShredRun::Add(const ShreddedFile& file, const std::string& path) {
  ++steps_;
  const bool deleted = file.before == Presence::There && file.after == Presence::Gone;
  if (deleted && file.failure.empty()) {
    ++shredded_;
  } else if (firstNotShredded_.empty()) {
    const char* const what = deleted ? " was deleted, but not overwritten as a whole" : " was not shredded";
    firstNotShredded_ = path + what + (file.failure.empty() ? "" : " (" + file.failure + ")");
  }
}

std::string ShredRun::Outcome() const {
  std::string counts = FilesShredded(shredded_, count_);
  if (firstNotShredded_.empty()) return counts;
  const int others = steps_ - shredded_ - 1;
  const std::string nor = others == 1 ? ", nor was 1 other" : ", nor were " + std::to_string(others) + " others";
  return counts + " " + firstNotShredded_ + (others == 0 ? "" : nor) + ".";
}

std::string MessageBefore(const std::string& manualLevel) {
  return "   Shredding Files at level " + manualLevel + " may take some time.";
}

std::string SecondMessageBefore(const std::string& scheduledLevel) {
  return "Shredding Files at level " + scheduledLevel + " may take more time.";
}

std::string FilesShredded(int done, int count) { return Outcome(done, count, "file", " shredded."); }
std::string FoldersDeleted(int done, int count) { return Outcome(done, count, "folder", " deleted."); }

std::string NeverShredded(const std::string& folder, FolderRefusal refusal) {
  switch (refusal) {
    case FolderRefusal::None:
      return "";
    case FolderRefusal::NoFolder:
      break;
    case FolderRefusal::Root:
      return folder + " is the root of a " + (folder.starts_with("\\\\") ? "share" : "drive") + " and is never shredded.";
    case FolderRefusal::Link:
      return folder + " is a link to another folder and is never shredded.";
    case FolderRefusal::Kept:
      return folder + " is or holds a folder of Windows, of its programs or of its user and is never shredded.";
  }
  return folder + " cannot be told from a folder that Windows needs and is never shredded.";
}

std::string ListNotSaved(const std::string& reason) { return "The scheduled list could not be saved (" + reason + ")."; }

std::string FilesReady(int count) {
  return count == 0 ? "" : "There are " + std::to_string(count) + " files ready for deleting!";
}

}  // namespace shred
