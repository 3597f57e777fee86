#include "shred/shred_run.h"

#include <gtest/gtest.h>

using namespace shred;

TEST(ShredRun, CountsAFileThatIsGoneAndWasOverwrittenWithoutAnError) {
  for (const bool wasThere : {false, true}) {
    for (const bool isThere : {false, true}) {
      for (const bool failed : {false, true}) {
        ShredRun run(1);
        run.Add({.wasThere = wasThere, .isThere = isThere, .failed = failed});
        EXPECT_EQ(run.Shredded(), wasThere && !isThere && !failed ? 1 : 0) << wasThere << isThere << failed;
        EXPECT_EQ(run.Steps(), 1);
      }
    }
  }
}

TEST(ShredRun, GoesOnUntilEachFileHadItsTurn) {
  ShredRun run(2);
  EXPECT_TRUE(run.GoesOn(false));
  run.Add({});
  EXPECT_TRUE(run.GoesOn(false));
  run.Add({});
  EXPECT_FALSE(run.GoesOn(false));
  EXPECT_FALSE(ShredRun(0).GoesOn(false));
}

TEST(ShredRun, EndsAfterTheFileInHandWhenAskedTo) {
  ShredRun run(3);
  run.Add({.wasThere = true, .isThere = false, .failed = false});
  EXPECT_FALSE(run.GoesOn(true));
  EXPECT_EQ(run.Steps(), 1) << "the two others stay on the list";
  EXPECT_EQ(run.Shredded(), 1);
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

TEST(FilesReady, CountsTheCollectionAndIsEmptyForNone) {
  EXPECT_EQ(FilesReady(0), "");
  EXPECT_EQ(FilesReady(1), "There are 1 files ready for deleting!");
  EXPECT_EQ(FilesReady(3), "There are 3 files ready for deleting!");
}
