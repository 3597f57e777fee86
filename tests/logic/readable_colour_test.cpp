#include "app/readable_colour.h"

#include <gtest/gtest.h>

using namespace app;

namespace {
constexpr std::uint32_t kBlack = 0, kWhite = 0xFFFFFF, kFace = 0xC0C0C0, kBlue = 0xFF0000, kYellow = 0x00FFFF;
}

TEST(ReadableColour, IsTheWantedOneWhereItCanBeRead) {
  EXPECT_EQ(ReadableOn(kFace, kBlue, kBlack), kBlue);
  EXPECT_EQ(ReadableOn(kWhite, kBlue, kBlack), kBlue);
  EXPECT_EQ(ReadableOn(kBlack, kYellow, kWhite), kYellow);
}

TEST(ReadableColour, IsThatOfTextsWhereTheWantedOneIsLost) {
  EXPECT_EQ(ReadableOn(kBlack, kBlue, kWhite), kWhite);
  EXPECT_EQ(ReadableOn(kFace, kYellow, kBlack), kBlack);
  EXPECT_EQ(ReadableOn(kFace, kFace, kBlack), kBlack);
}

TEST(ReadableColour, WeighsTheColoursAsTheEyeDoes) {
  EXPECT_EQ(Brightness(kWhite), 255);
  EXPECT_EQ(Brightness(0x0000FF), 76);
  EXPECT_EQ(Brightness(0x00FF00), 149);
  EXPECT_EQ(Brightness(kBlue), 29);
}
