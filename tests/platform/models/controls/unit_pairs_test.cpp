#include "platform/models/controls/unit_pairs.h"

#include <gtest/gtest.h>

#include "tests/support/print.h"

namespace {

constexpr TCHAR kHigh = 0xD83D;
constexpr TCHAR kLow = 0xDE00;
const CString kFace = CString(kHigh) + CString(kLow);

}  // namespace

TEST(UnitPairs, FittingPartNeverPartsAPair) {
  EXPECT_EQ(lorv::FittingPart(_T("a\r\nb"), 2), CString(_T("a")));
  EXPECT_EQ(lorv::FittingPart(_T("a\r\nb"), 3), CString(_T("a\r\n")));
  EXPECT_EQ(lorv::FittingPart(_T("a") + kFace, 2), CString(_T("a")));
  EXPECT_EQ(lorv::FittingPart(_T("a") + kFace, 3), _T("a") + kFace);
  EXPECT_EQ(lorv::FittingPart(kFace, 1), CString());
  EXPECT_EQ(lorv::FittingPart(kFace, 0), CString());
  EXPECT_EQ(lorv::FittingPart(kFace, -4), CString());
  EXPECT_EQ(lorv::FittingPart(CString(), 0), CString());
}

TEST(UnitPairs, LoneHalvesAreCutLikeAnyUnit) {
  const CString wrong_way = CString(kLow) + CString(kHigh);
  EXPECT_EQ(lorv::FittingPart(wrong_way, 1), CString(kLow));
  EXPECT_EQ(lorv::FittingPart(CString(kHigh) + _T("a"), 1), CString(kHigh));
}

TEST(TypedHalves, HeaderExample) {
  lorv::TypedHalves halves;
  EXPECT_TRUE(halves.Refuses(kHigh, 1));
  EXPECT_TRUE(halves.Refuses(kLow, 1));
}

TEST(TypedHalves, BothAreTakenWhereBothFit) {
  lorv::TypedHalves halves;
  EXPECT_FALSE(halves.Refuses(kHigh, 2));
  EXPECT_FALSE(halves.Refuses(kLow, 1));
}

TEST(TypedHalves, OnlyTheOtherHalfIsRefusedAfterTheFirst) {
  lorv::TypedHalves halves;
  EXPECT_TRUE(halves.Refuses(kHigh, 1));
  EXPECT_FALSE(halves.Refuses(_T('a'), 1));
  EXPECT_FALSE(halves.Refuses(kLow, 1));
  EXPECT_TRUE(halves.Refuses(kHigh, 0));
  EXPECT_TRUE(halves.Refuses(kHigh, 1));
  EXPECT_TRUE(halves.Refuses(kLow, 5));
  EXPECT_FALSE(halves.Refuses(kLow, 5));
}
