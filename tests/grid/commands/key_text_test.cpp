#include "grid/commands/key_text.h"

#include <gtest/gtest.h>

#include "framework/native/window_types.h"
#include "grid/commands/key_name_table.h"

using lorv::ChordFromText;
using lorv::ChordsFromText;
using lorv::ChordToText;
using lorv::KeyChord;

TEST(KeyText, HeaderExamples) {
  EXPECT_EQ(ChordFromText(_T("ctrl+f")), (KeyChord{'F', true, false, false}));
  EXPECT_EQ(ChordToText({'F', true, true, false}), CString(_T("Ctrl+Shift+F")));
}

TEST(KeyText, HeldKeysStandInAnyOrderOnce) {
  EXPECT_EQ(ChordFromText(_T(" Alt + Ctrl+ shift +Home")), std::nullopt);
  EXPECT_EQ(ChordFromText(_T(" Alt+ Ctrl+ shift+ Home ")), (KeyChord{VK_HOME, true, true, true}));
  EXPECT_EQ(ChordFromText(_T("Ctrl+Ctrl+A")), std::nullopt);
}

TEST(KeyText, NamesMayEndWithThePlus) {
  EXPECT_EQ(ChordFromText(_T("Num+")), (KeyChord{VK_ADD, false, false, false}));
  EXPECT_EQ(ChordFromText(_T("Ctrl+Num+")), (KeyChord{VK_ADD, true, false, false}));
}

TEST(KeyText, WhatNamesNoKeyIsNone) {
  for (const LPCTSTR text :
       {_T(""), _T("Ctrl"), _T("Ctrl+"), _T("+"), _T("F13"), _T("AB"), _T("梁"), _T("Shift+F0")})
    EXPECT_EQ(ChordFromText(text), std::nullopt) << CString(text).ToUtf8();
}

TEST(KeyText, ListsHaveCommas) {
  const auto none = ChordsFromText(_T("  "));
  ASSERT_TRUE(none.has_value());
  EXPECT_TRUE(none->empty());
  const auto two = ChordsFromText(_T("Ctrl+C,Ctrl+Insert"));
  ASSERT_TRUE(two.has_value());
  EXPECT_EQ(two->size(), 2U);
  EXPECT_EQ(two->back(), (KeyChord{VK_INSERT, true, false, false}));
  for (const LPCTSTR text : {_T("A,"), _T(",A"), _T("A,,B"), _T("A B")})
    EXPECT_FALSE(ChordsFromText(text).has_value()) << CString(text).ToUtf8();
}

TEST(KeyText, EachNamedKeyComesBack) {
  for (const lorv::KeyName& known : lorv::kKeyNames) {
    const KeyChord chord{known.key, true, false, true};
    EXPECT_EQ(ChordToText(chord), CString(_T("Ctrl+Alt+")) + known.name);
    EXPECT_EQ(ChordFromText(ChordToText(chord)), chord);
  }
  for (unsigned key = '0'; key <= '9'; ++key) EXPECT_EQ(ChordFromText(ChordToText({key})), KeyChord{key});
  EXPECT_EQ(ChordToText({0}), CString());
  EXPECT_EQ(ChordToText({0xFFFF, true}), CString());
}
