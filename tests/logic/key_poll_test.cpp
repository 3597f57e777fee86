#include "automation/key_poll.h"

#include <gtest/gtest.h>

#include <string>

using namespace automation;

namespace {

// What GetAsyncKeyState answers: not touched, tapped between two polls, held, and just pressed and still held.
constexpr std::uint16_t kUp = 0, kTapped = 0x0001, kHeld = 0x8000, kPressed = 0x8001;
constexpr std::uint16_t kTouched[] = {kTapped, kHeld, kPressed};
constexpr std::uint16_t kEveryState[] = {kUp, kTapped, kHeld, kPressed};

// The actions in their order, "" for none.
std::string Actions(const PolledKeys& keys) {
  const PollActions actions = ActionsOf(keys);
  return std::string(actions.hide ? "hide " : "") + (actions.restore ? "restore " : "") +
         (actions.comeBack ? "come back " : "") + (actions.goInvisible ? "go invisible " : "");
}

bool InCommon(std::uint16_t one, std::uint16_t other) {
  return (one >= 0x8000 && other >= 0x8000) || (one % 2 == 1 && other % 2 == 1);
}

}  // namespace

TEST(ThePoll, DoesNothingWithoutAKey) { EXPECT_EQ(Actions({}), ""); }

TEST(ThePoll, HidesAtTheBossKeyHoweverShortItWasPressed) {
  for (const std::uint16_t boss : kTouched) EXPECT_EQ(Actions({.boss = boss}), "hide ") << boss;
}

TEST(ThePoll, HidesAtAnyBitOfTheAnswer) {
  for (int bit = 0; bit < 16; ++bit) EXPECT_EQ(Actions({.boss = static_cast<std::uint16_t>(1 << bit)}), "hide ") << bit;
}

TEST(ThePoll, DoesNothingAtShiftCtrlUOrHAlone) {
  for (const std::uint16_t key : kTouched) {
    EXPECT_EQ(Actions({.shift = key}), "");
    EXPECT_EQ(Actions({.ctrl = key}), "");
    EXPECT_EQ(Actions({.u = key}), "");
    EXPECT_EQ(Actions({.h = key}), "");
    EXPECT_EQ(Actions({.shift = key, .u = key, .h = key}), "");
  }
}

TEST(ThePoll, RestoresAfterHidingWhileShiftAndTheBossKeyAreHeld) {
  EXPECT_EQ(Actions({.boss = kHeld, .shift = kHeld}), "hide restore ");
  EXPECT_EQ(Actions({.boss = kPressed, .shift = kHeld}), "hide restore ");
  EXPECT_EQ(Actions({.boss = kHeld, .shift = kPressed}), "hide restore ");
}

TEST(ThePoll, RestoresAfterATapOfBothBetweenTwoPolls) {
  EXPECT_EQ(Actions({.boss = kTapped, .shift = kTapped}), "hide restore ");
}

TEST(ThePoll, OnlyHidesWhenTheAnswersForShiftAndTheBossKeyHaveNoBitInCommon) {
  EXPECT_EQ(Actions({.boss = kTapped, .shift = kHeld}), "hide ");
  EXPECT_EQ(Actions({.boss = kHeld, .shift = kTapped}), "hide ");
}

TEST(ThePoll, ComesBackAtCtrlU) {
  EXPECT_EQ(Actions({.ctrl = kHeld, .u = kHeld}), "come back ");
  EXPECT_EQ(Actions({.ctrl = kHeld, .u = kPressed}), "come back ");
  EXPECT_EQ(Actions({.ctrl = kTapped, .u = kTapped}), "come back ");
  EXPECT_EQ(Actions({.ctrl = kHeld, .u = kTapped}), "");
}

TEST(ThePoll, GoesInvisibleAtCtrlH) {
  EXPECT_EQ(Actions({.ctrl = kHeld, .h = kHeld}), "go invisible ");
  EXPECT_EQ(Actions({.ctrl = kHeld, .h = kPressed}), "go invisible ");
  EXPECT_EQ(Actions({.ctrl = kTapped, .h = kTapped}), "go invisible ");
  EXPECT_EQ(Actions({.ctrl = kHeld, .h = kTapped}), "");
}

TEST(ThePoll, ComesBackAndDoesNotGoInvisibleAtBoth) {
  EXPECT_EQ(Actions({.ctrl = kHeld, .u = kHeld, .h = kHeld}), "come back ");
  EXPECT_EQ(Actions({.ctrl = kPressed, .u = kTapped, .h = kHeld}), "come back ");
  EXPECT_EQ(Actions({.ctrl = kHeld, .u = kTapped, .h = kHeld}), "go invisible ") << "U was over before";
}

TEST(ThePoll, DoesAllThatTheKeysAskForInOneGo) {
  EXPECT_EQ(Actions({.boss = kHeld, .shift = kHeld, .ctrl = kHeld, .u = kHeld, .h = kHeld}), "hide restore come back ");
  EXPECT_EQ(Actions({.boss = kHeld, .shift = kUp, .ctrl = kHeld, .u = kUp, .h = kHeld}), "hide go invisible ");
}

TEST(ThePoll, HandlesALetterAsTheBossKeyLikeAnyOtherKey) {
  // A stored code may be that of H or U: one answer then serves both tests.
  EXPECT_EQ(Actions({.boss = kHeld, .ctrl = kHeld, .h = kHeld}), "hide go invisible ");
  EXPECT_EQ(Actions({.boss = kHeld, .ctrl = kHeld, .u = kHeld}), "hide come back ");
}

TEST(ThePoll, FollowsItsFourRulesInEveryStateOfTheFiveKeys) {
  for (const std::uint16_t boss : kEveryState)
    for (const std::uint16_t shift : kEveryState)
      for (const std::uint16_t ctrl : kEveryState)
        for (const std::uint16_t u : kEveryState)
          for (const std::uint16_t h : kEveryState) {
            const PollActions actions = ActionsOf({boss, shift, ctrl, u, h});
            ASSERT_EQ(actions.hide, boss != kUp);
            ASSERT_EQ(actions.restore, InCommon(shift, boss));
            ASSERT_EQ(actions.comeBack, InCommon(ctrl, u));
            ASSERT_EQ(actions.goInvisible, !InCommon(ctrl, u) && InCommon(ctrl, h));
          }
}
