#include "grid/editing/key_translation.h"

#include <gtest/gtest.h>

namespace {

using lorv::KeySituation;
using lorv::TranslatedKey;

KeySituation OnLastRow() {
  KeySituation now;
  now.adds_rows = true;
  now.row = 4;
  now.row_count = 5;
  return now;
}

}  // namespace

TEST(KeyTranslation, HeaderExample) {
  EXPECT_EQ(TranslatedKey(lorv::kKeyTab, KeySituation()), lorv::kKeyRight);
}

TEST(KeyTranslation, ReturnGoesDownAtFirst) {
  EXPECT_EQ(TranslatedKey(lorv::kKeyReturn, KeySituation()), lorv::kKeyDown);
}

TEST(KeyTranslation, StylesTurnReturnAndTab) {
  struct Case {
    emReturnStyle style;
    unsigned for_return;
    unsigned for_tab;
  };
  for (const Case& wanted : {Case{emReturnAsIs, lorv::kKeyReturn, lorv::kKeyTab},
                             Case{emReturnRight, lorv::kKeyRight, lorv::kKeyRight},
                             Case{emReturnDown, lorv::kKeyDown, lorv::kKeyDown},
                             Case{static_cast<emReturnStyle>(3), lorv::kKeyReturn, lorv::kKeyTab}}) {
    KeySituation now;
    now.return_style = wanted.style;
    now.tab_style = wanted.style;
    EXPECT_EQ(TranslatedKey(lorv::kKeyReturn, now), wanted.for_return) << wanted.style;
    EXPECT_EQ(TranslatedKey(lorv::kKeyTab, now), wanted.for_tab) << wanted.style;
  }
}

TEST(KeyTranslation, OnTheLastRowReturnGoesDownWhateverItsStyle) {
  KeySituation now = OnLastRow();
  for (const emReturnStyle style : {emReturnAsIs, emReturnRight, emReturnDown}) {
    now.return_style = style;
    EXPECT_EQ(TranslatedKey(lorv::kKeyReturn, now), lorv::kKeyDown) << style;
    EXPECT_EQ(TranslatedKey(lorv::kKeyDown, now), lorv::kKeyDown) << style;
  }
  EXPECT_EQ(TranslatedKey(lorv::kKeyTab, now), lorv::kKeyRight) << "Tab has its own style there, too";
}

TEST(KeyTranslation, ElsewhereTheStyleCounts) {
  KeySituation now = OnLastRow();
  now.return_style = emReturnRight;
  now.row = 3;
  EXPECT_EQ(TranslatedKey(lorv::kKeyReturn, now), lorv::kKeyRight);
  now = OnLastRow();
  now.return_style = emReturnRight;
  now.read_only = true;
  EXPECT_EQ(TranslatedKey(lorv::kKeyReturn, now), lorv::kKeyRight) << "a read-only grid adds no rows";
  now = OnLastRow();
  now.return_style = emReturnRight;
  now.adds_rows = false;
  EXPECT_EQ(TranslatedKey(lorv::kKeyReturn, now), lorv::kKeyRight);
}

TEST(KeyTranslation, AnEmptyGridHasNoLastRow) {
  KeySituation now = OnLastRow();
  now.return_style = emReturnRight;
  now.row = -1;
  now.row_count = 0;
  EXPECT_EQ(TranslatedKey(lorv::kKeyReturn, now), lorv::kKeyRight);
}

TEST(KeyTranslation, OtherKeysAreThemselves) {
  for (unsigned key = 0; key < 256; ++key) {
    if (key != lorv::kKeyReturn && key != lorv::kKeyTab) {
      EXPECT_EQ(TranslatedKey(key, OnLastRow()), key);
    }
  }
}

TEST(KeyTranslation, DirectionsAreSentAsArrows) {
  EXPECT_EQ(lorv::KeyOfDirection(1), 38U);
  EXPECT_EQ(lorv::KeyOfDirection(2), 40U);
  EXPECT_EQ(lorv::KeyOfDirection(4), 37U);
  EXPECT_EQ(lorv::KeyOfDirection(8), 39U);
  for (const int other : {0, 3, 5, 16, -1}) EXPECT_EQ(lorv::KeyOfDirection(other), 0U) << other;
}
