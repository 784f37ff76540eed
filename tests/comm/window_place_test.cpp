#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "comm/AdLorvComm.h"
#include "platform/headless/services/headless_platform.h"
#include "tests/support/print.h"

namespace lorv::test {
namespace {

constexpr RECT kDesktop = {0, 0, 1000, 800};

struct Place {
  bool good;
  CRect rect{-1, -1, -1, -1};
  int show_state = 77;
};

Place Read(const char* text, const RECT& desktop = kDesktop) {
  Place place{};
  place.good =
      CAdLorvComm::WndPosFromStringToRect(CString::FromUtf8(text), place.rect, place.show_state, desktop);
  return place;
}

TEST(WindowPlace, FourAndFiveNumbersAreRead) {
  const Place four = Read("10,10,100,100");
  EXPECT_TRUE(four.good);
  EXPECT_EQ(four.rect, CRect(10, 10, 100, 100));
  EXPECT_EQ(four.show_state, -1);
  const Place five = Read("10,10,100,100,3");
  EXPECT_TRUE(five.good);
  EXPECT_EQ(five.rect, CRect(10, 10, 100, 100));
  EXPECT_EQ(five.show_state, 3);
  EXPECT_TRUE(Read("10,10,100,100,").good) << "an empty piece at the end is none";
}

TEST(WindowPlace, RefusedTextsLeaveTheRectangle) {
  for (const char* text :
       {"", "1,2,3", "1,2,3,4,5,6", "10,10,5,100", "10,10,100,5", "10,10,10,100", "10,10,100,10",
        "1000,10,1100,100", "-100,10,0,100", "10,800,100,900", "a,b,c,d", "1;2;3;4"}) {
    const Place place = Read(text);
    EXPECT_FALSE(place.good) << text;
    EXPECT_EQ(place.rect, CRect(-1, -1, -1, -1)) << text;
    EXPECT_EQ(place.show_state, -1) << text;
  }
}

TEST(WindowPlace, ShowStateIsSetEvenIfTheRectangleIsRefused) {
  EXPECT_EQ(Read("10,10,5,100,3").show_state, 3);
}

TEST(WindowPlace, TitleBarMustBeInReach) {
  EXPECT_FALSE(Read("10,-30,100,100").good);
  EXPECT_FALSE(Read("10,-19,100,100").good);
  EXPECT_TRUE(Read("10,-18,100,100").good);
  EXPECT_TRUE(Read("10,-15,100,100").good);
  EXPECT_TRUE(Read("10,790,100,900").good);
  EXPECT_FALSE(Read("10,791,100,900").good);
}

TEST(WindowPlace, DesktopMayLieAnywhere) {
  const RECT left_screen = {-1920, -200, 0, 880};
  EXPECT_TRUE(Read("-1900,-210,-100,100", left_screen).good);
  EXPECT_FALSE(Read("10,10,100,100", left_screen).good);
}

TEST(WindowPlace, NumbersAtTheEndsOfTheRangeAreNoDanger) {
  EXPECT_FALSE(Read("0,2147483647,100,99999999999").good);
  EXPECT_FALSE(Read("-99999999999,-99999999999,99999999999,99999999999").good);
  EXPECT_TRUE(Read("-99999999999,0,99999999999,99999999999").good);
}

TEST(WindowPlace, PartsAreReadAsFarAsTheyAreNumbers) {
  EXPECT_EQ(Read(" 10mm,x, 100,200.9").rect, CRect(10, 0, 100, 200));
}

TEST(WindowPlace, DesktopIsThatOfTheShell) {
  HeadlessPlatform machine;
  machine.shell.desktop = {0, 0, 50, 50};
  const ScopedPlatform scope(machine.Ports());
  CRect rect;
  int show_state = 0;
  EXPECT_TRUE(CAdLorvComm::WndPosFromStringToRect(_T("10,10,100,100"), rect, show_state));
  EXPECT_FALSE(CAdLorvComm::WndPosFromStringToRect(_T("50,10,100,100"), rect, show_state));
}

TEST(WindowPlace, WritesFiveNumbersAndReadsThemBack) {
  CString text(_T("old"));
  CAdLorvComm::WndPosFromRectToString(text, CRect(-5, 6, 700, 80), 3);
  EXPECT_EQ(Utf8(text), "-5,6,700,80,3");
  const Place place = Read("-5,6,700,80,3");
  EXPECT_TRUE(place.good);
  EXPECT_EQ(place.rect, CRect(-5, 6, 700, 80));
}

}  // namespace
}  // namespace lorv::test
