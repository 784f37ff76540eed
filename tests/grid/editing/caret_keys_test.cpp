#include "grid/editing/caret_keys.h"

#include <gtest/gtest.h>

#include <ostream>

#include "grid/editing/key_translation.h"

namespace {

using lorv::CaretStep;
using lorv::CaretStepFor;

constexpr CaretStep kEditor{CaretStep::kEditor, 0};
constexpr CaretStep kOther{CaretStep::kOther, 0};

constexpr CaretStep Collapse(int position) {
  return {CaretStep::kCollapse, position};
}

}  // namespace

TEST(CaretKeys, HeaderExamples) {
  EXPECT_EQ(CaretStepFor(lorv::kKeyRight, false, 1, 1, 3).kind, CaretStep::kEditor);
  EXPECT_EQ(CaretStepFor(lorv::kKeyRight, false, 2, 2, 3).kind, CaretStep::kOther);
}

TEST(CaretKeys, ToTheLeftTheCaretLeavesFromTheBeginningOnly) {
  for (const unsigned key : {lorv::kKeyLeft, lorv::kKeyHome}) {
    EXPECT_EQ(CaretStepFor(key, false, 0, 0, 3), kOther) << key;
    EXPECT_EQ(CaretStepFor(key, false, 1, 1, 3), kEditor) << key;
    EXPECT_EQ(CaretStepFor(key, false, 3, 3, 3), kEditor) << key;
  }
}

TEST(CaretKeys, ToTheRightTheLastCharacterButOneIsTheEnd) {
  for (const unsigned key : {lorv::kKeyRight, lorv::kKeyEnd}) {
    EXPECT_EQ(CaretStepFor(key, false, 1, 1, 3), kEditor) << key;
    EXPECT_EQ(CaretStepFor(key, false, 2, 2, 3), kOther) << key;
    EXPECT_EQ(CaretStepFor(key, false, 3, 3, 3), kOther) << key;
    EXPECT_EQ(CaretStepFor(key, false, 0, 0, 1), kOther) << key;
    EXPECT_EQ(CaretStepFor(key, false, 0, 0, 0), kOther) << key;
  }
}

TEST(CaretKeys, ASelectionCollapsesFirst) {
  EXPECT_EQ(CaretStepFor(lorv::kKeyLeft, false, 0, 3, 3), Collapse(0));
  EXPECT_EQ(CaretStepFor(lorv::kKeyHome, false, 1, 2, 3), Collapse(1));
  EXPECT_EQ(CaretStepFor(lorv::kKeyRight, false, 0, 3, 3), Collapse(3));
  EXPECT_EQ(CaretStepFor(lorv::kKeyEnd, false, 1, 2, 3), Collapse(2));
}

TEST(CaretKeys, WithShiftEveryKeyIsTheEditors) {
  for (const unsigned key : {lorv::kKeyLeft, lorv::kKeyRight, lorv::kKeyHome, lorv::kKeyEnd, lorv::kKeyUp,
                             lorv::kKeyDown, lorv::kKeyReturn, lorv::kKeyTab})
    EXPECT_EQ(CaretStepFor(key, true, 0, 0, 0), kEditor) << key;
}

TEST(CaretKeys, OtherKeysAreNotSettledHere) {
  for (const unsigned key : {lorv::kKeyUp, lorv::kKeyDown, lorv::kKeyReturn, lorv::kKeyTab, 65U})
    EXPECT_EQ(CaretStepFor(key, false, 0, 3, 3), kOther) << key;
}
