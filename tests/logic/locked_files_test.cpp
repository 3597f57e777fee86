#include "cleaners/locked_files.h"

#include <gtest/gtest.h>

using cleaners::Patience;

TEST(LockedFiles, AreTriedThreeTimesInAll) {
  Patience patience;
  EXPECT_TRUE(patience.MayTryAgain(1));
  EXPECT_TRUE(patience.MayTryAgain(2));
  EXPECT_FALSE(patience.MayTryAgain(3));
  EXPECT_TRUE(patience.MayTryAgain(1)) << "the next file";
}

TEST(LockedFiles, TakeNoMoreThanTwoSecondsOfARun) {
  Patience patience;
  for (int run = 0; run < 2; ++run) {
    unsigned pauses = 0;
    for (int file = 0; file < 1000; ++file)
      for (int tries = 1; patience.MayTryAgain(tries); ++tries) ++pauses;
    EXPECT_EQ(pauses * Patience::kPause, 2000u);
    EXPECT_FALSE(patience.MayTryAgain(1));
    patience.BeginRun();
  }
}
