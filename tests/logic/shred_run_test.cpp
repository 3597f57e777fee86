#include "shred/shred_run.h"

#include <gtest/gtest.h>

using namespace shred;

namespace {

constexpr Presence kPresences[] = {Presence::There, Presence::Gone, Presence::OutOfReach};
const ShreddedFile kShredded{.before = Presence::There, .after = Presence::Gone, .failure = ""};
const ShreddedFile kHeld{.before = Presence::There, .after = Presence::There, .failure = "Permission denied"};

std::string OutcomeOf(int count, const std::vector<ShreddedFile>& files) {
  ShredRun run(count);
  for (std::size_t file = 0; file < files.size(); ++file) run.Add(files[file], "C:\\" + std::to_string(file + 1));
  return run.Outcome();
}

}  // namespace

TEST(ShredRun, CountsAFileThatIsGoneAndWasOverwrittenWithoutAnError) {
  for (const Presence before : kPresences) {
    for (const Presence after : kPresences) {
      for (const char* failure : {"", "Disk full"}) {
        ShredRun run(1);
        run.Add({.before = before, .after = after, .failure = failure}, "C:\\1");
        const bool shredded = before == Presence::There && after == Presence::Gone && *failure == '\0';
        EXPECT_EQ(run.Outcome() == "1 file shredded.", shredded)
            << static_cast<int>(before) << static_cast<int>(after) << failure << ": " << run.Outcome();
        EXPECT_EQ(run.Steps(), 1);
      }
    }
  }
}

TEST(ShredRun, TakesFromTheListWhatIsGoneAndNothingElse) {
  for (const Presence before : kPresences) {
    EXPECT_TRUE(LeavesTheList({.before = before, .after = Presence::Gone, .failure = "Type mismatch"}));
    EXPECT_FALSE(LeavesTheList({.before = before, .after = Presence::There, .failure = ""}));
    EXPECT_FALSE(LeavesTheList({.before = before, .after = Presence::OutOfReach, .failure = ""}));
  }
}

TEST(ShredRun, GoesOnUntilEachFileHadItsTurn) {
  ShredRun run(2);
  EXPECT_TRUE(run.GoesOn(false));
  run.Add({}, "C:\\1");
  EXPECT_TRUE(run.GoesOn(false));
  run.Add({}, "C:\\1");
  EXPECT_FALSE(run.GoesOn(false));
  EXPECT_FALSE(ShredRun(0).GoesOn(false));
}

TEST(ShredRun, EndsAfterTheFileInHandWhenAskedTo) {
  ShredRun run(3);
  run.Add(kShredded, "C:\\1");
  EXPECT_FALSE(run.GoesOn(true));
  EXPECT_EQ(run.Steps(), 1) << "the two others stay on the list";
  EXPECT_EQ(run.Outcome(), "1 of 3 files shredded.");
}

TEST(ShredMessages, NameTheLevelsAsTheyAre) {
  EXPECT_EQ(MessageBefore("50"), "   Shredding Files at level 50 may take some time.");
  EXPECT_EQ(SecondMessageBefore(""), "Shredding Files at level  may take more time.");
}

TEST(ShredMessages, SayOfHowManyWhenNotAll) {
  EXPECT_EQ(FilesShredded(3, 3), "3 files shredded.");
  EXPECT_EQ(FilesShredded(1, 1), "1 file shredded.");
  EXPECT_EQ(FilesShredded(0, 1), "0 of 1 file shredded.");
  EXPECT_EQ(FilesShredded(2, 3), "2 of 3 files shredded.");
  EXPECT_EQ(FoldersDeleted(1, 2), "1 of 2 folders deleted.");
  EXPECT_EQ(FoldersDeleted(1, 1), "1 folder deleted.");
}

TEST(ShredRun, TellsWhatBecameOfTheFirstFileThatWasNotShredded) {
  const ShreddedFile notOverwritten{.before = Presence::There, .after = Presence::Gone, .failure = "Type mismatch"};
  const ShreddedFile outOfReach{.before = Presence::OutOfReach, .after = Presence::OutOfReach, .failure = "Path not found"};
  EXPECT_EQ(OutcomeOf(2, {kShredded, kShredded}), "2 files shredded.");
  EXPECT_EQ(OutcomeOf(1, {kHeld}), "0 of 1 file shredded. C:\\1 was not shredded (Permission denied).");
  EXPECT_EQ(OutcomeOf(2, {kShredded, outOfReach}), "1 of 2 files shredded. C:\\2 was not shredded (Path not found).");
  EXPECT_EQ(OutcomeOf(2, {notOverwritten, kHeld}),
            "0 of 2 files shredded. C:\\1 was deleted, but not overwritten as a whole (Type mismatch), nor was 1 other.");
  EXPECT_EQ(OutcomeOf(4, {kHeld, outOfReach, kShredded, kHeld}),
            "1 of 4 files shredded. C:\\1 was not shredded (Permission denied), nor were 2 others.");
  EXPECT_EQ(OutcomeOf(3, {kShredded}), "1 of 3 files shredded.") << "a stop is no failure";
}

TEST(ShredMessages, SayWhyAFolderIsRefused) {
  using cleaners::FolderRefusal;
  EXPECT_EQ(NeverShredded("C:\\", FolderRefusal::Root), "C:\\ is the root of a drive and is never shredded.");
  EXPECT_EQ(NeverShredded("\\\\server\\share\\", FolderRefusal::Root),
            "\\\\server\\share\\ is the root of a share and is never shredded.");
  EXPECT_EQ(NeverShredded("C:\\link", FolderRefusal::Link), "C:\\link is a link to another folder and is never shredded.");
  EXPECT_EQ(NeverShredded("C:\\WINDOWS", FolderRefusal::Kept),
            "C:\\WINDOWS is or holds a folder of Windows, of its programs or of its user and is never shredded.");
  EXPECT_EQ(NeverShredded("C:\\a", FolderRefusal::NoFolder),
            "C:\\a cannot be told from a folder that Windows needs and is never shredded.");
  EXPECT_EQ(NeverShredded("C:\\a", FolderRefusal::None), "");
}

TEST(ShredMessages, SayWhyTheListWasNotSaved) {
  EXPECT_EQ(ListNotSaved("Disk full"), "The scheduled list could not be saved (Disk full).");
}

TEST(FilesReady, CountsTheCollectionAndIsEmptyForNone) {
  EXPECT_EQ(FilesReady(0), "");
  EXPECT_EQ(FilesReady(1), "There are 1 files ready for deleting!");
  EXPECT_EQ(FilesReady(3), "There are 3 files ready for deleting!");
}
