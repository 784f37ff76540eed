#include "platform/headless/controls/headless_edit_text.h"

#include <gtest/gtest.h>

#include "tests/support/print.h"

namespace {

using Pair = std::pair<int, int>;
using Starts = std::vector<int>;

const TCHAR kPairUnits[] = {0xD840, 0xDC00, 0};  // one letter of two units
constexpr int kNarrow = 7;                       // a letter's width

class HeadlessEditText : public testing::Test {
 protected:
  using EditText = lorv::HeadlessEditText;

  static Pair Selection(const EditText& of) { return {of.Start(), of.End()}; }

  const CString pair{kPairUnits};
  EditText line{false};
  EditText lines{true};
};

}  // namespace

TEST_F(HeadlessEditText, BeginsEmpty) {
  EXPECT_TRUE(line.text.IsEmpty());
  EXPECT_EQ(Selection(line), Pair(0, 0));
}

TEST_F(HeadlessEditText, SelectsFromStartToEndWithTheCaretThere) {
  line.Set(_T("abcdef"));
  line.Select(2, 5);
  EXPECT_EQ(Selection(line), Pair(2, 5));
  EXPECT_EQ(line.Caret(), 5);
}

TEST_F(HeadlessEditText, SelectsAReversedRangeForwards) {
  line.Set(_T("abcdef"));
  line.Select(5, 2);
  EXPECT_EQ(Selection(line), Pair(2, 5));
  EXPECT_EQ(line.Caret(), 5);
}

TEST_F(HeadlessEditText, SelectsAllByMinusOne) {
  line.Set(_T("abcdef"));
  line.Select(0, -1);
  EXPECT_EQ(Selection(line), Pair(0, 6));
  line.Select(4, -1);
  EXPECT_EQ(Selection(line), Pair(4, 6));
}

TEST_F(HeadlessEditText, SelectsNoneByAStartOfMinusOne) {
  line.Set(_T("abcdef"));
  line.Select(1, 4);
  line.Select(-1, 0);
  EXPECT_EQ(Selection(line), Pair(4, 4));
  EXPECT_EQ(line.Caret(), 4);
}

TEST_F(HeadlessEditText, SelectsNoFartherThanTheText) {
  line.Set(_T("abcdef"));
  line.Select(4, 99);
  EXPECT_EQ(Selection(line), Pair(4, 6));
  line.Select(77, 99);
  EXPECT_EQ(Selection(line), Pair(6, 6));
  line.Select(-2, 3);
  EXPECT_EQ(Selection(line), Pair(3, 6));
}

TEST_F(HeadlessEditText, SelectsNothingInAnEmptyText) {
  line.Select(0, -1);
  EXPECT_EQ(Selection(line), Pair(0, 0));
  line.Select(3, 5);
  EXPECT_EQ(Selection(line), Pair(0, 0));
}

TEST_F(HeadlessEditText, CaretMovesAloneOrExtends) {
  line.Set(_T("abcdef"));
  line.MoveCaret(4, false);
  EXPECT_EQ(Selection(line), Pair(4, 4));
  line.MoveCaret(1, true);
  EXPECT_EQ(Selection(line), Pair(1, 4));
  EXPECT_EQ(line.Caret(), 1);
  line.MoveCaret(6, true);
  EXPECT_EQ(Selection(line), Pair(4, 6));
}

TEST_F(HeadlessEditText, CaretStaysInTheText) {
  line.Set(_T("abc"));
  line.MoveCaret(99, false);
  EXPECT_EQ(line.Caret(), 3);
  line.MoveCaret(-99, true);
  EXPECT_EQ(Selection(line), Pair(0, 3));
}

TEST_F(HeadlessEditText, CaretNeverStandsInsideAPair) {
  lines.Set(_T("a\r\nb") + pair);
  lines.MoveCaret(2, false);
  EXPECT_EQ(lines.Caret(), 1);
  lines.MoveCaret(5, false);
  EXPECT_EQ(lines.Caret(), 4);
}

TEST_F(HeadlessEditText, CaretMayStandBesideALoneHalf) {
  line.Set(pair.Right(1) + pair.Left(1) + _T("\n\r"));
  for (int at = 0; at <= 4; ++at) {
    line.MoveCaret(at, false);
    EXPECT_EQ(line.Caret(), at);
  }
}

TEST_F(HeadlessEditText, SetForgetsSelectionAndUndo) {
  line.Set(_T("abc"));
  line.Select(0, 2);
  line.Replace(_T("x"));
  line.Set(_T("new"));
  EXPECT_EQ(line.text, CString(_T("new")));
  EXPECT_EQ(Selection(line), Pair(0, 0));
  EXPECT_FALSE(line.Undo());
  EXPECT_EQ(line.text, CString(_T("new")));
}

TEST_F(HeadlessEditText, ReplacesTheSelection) {
  line.Set(_T("KL12"));
  line.Select(0, 2);
  line.Replace(_T("WKL"));
  EXPECT_EQ(line.text, CString(_T("WKL12")));
  EXPECT_EQ(Selection(line), Pair(3, 3));
}

TEST_F(HeadlessEditText, ReplacesASelectionMadeBackwards) {
  line.Set(_T("abcdef"));
  line.MoveCaret(5, false);
  line.MoveCaret(2, true);
  line.Replace(_T("-"));
  EXPECT_EQ(line.text, CString(_T("ab-f")));
  EXPECT_EQ(Selection(line), Pair(3, 3));
}

TEST_F(HeadlessEditText, ReplacesByNothing) {
  line.Set(_T("abc"));
  line.Select(1, 2);
  line.Replace(CString());
  EXPECT_EQ(line.text, CString(_T("ac")));
  EXPECT_EQ(Selection(line), Pair(1, 1));
}

TEST_F(HeadlessEditText, UndoGoesBackAndForth) {
  line.Set(_T("abc"));
  line.Select(1, 3);
  line.Replace(_T("xyz"));
  EXPECT_TRUE(line.Undo());
  EXPECT_EQ(line.text, CString(_T("abc")));
  EXPECT_EQ(Selection(line), Pair(3, 3));
  EXPECT_TRUE(line.Undo());
  EXPECT_EQ(line.text, CString(_T("axyz")));
  EXPECT_EQ(Selection(line), Pair(4, 4));
}

TEST_F(HeadlessEditText, UndoReachesTheLastChangeOnly) {
  line.Replace(_T("a"));
  line.Replace(_T("b"));
  line.Undo();
  EXPECT_EQ(line.text, CString(_T("a")));
}

TEST_F(HeadlessEditText, UndoOfNothingAnswersFalse) {
  line.Set(_T("abc"));
  line.Select(1, 2);
  EXPECT_FALSE(line.Undo());
  EXPECT_EQ(Selection(line), Pair(1, 2));
}

TEST_F(HeadlessEditText, StepsAreOfOneUnit) {
  line.Set(_T("a梁b"));
  EXPECT_EQ(line.StepOn(1), 2);
  EXPECT_EQ(line.StepBack(2), 1);
}

TEST_F(HeadlessEditText, StepsPassLineEndsAsOne) {
  lines.Set(_T("a\r\nb"));
  EXPECT_EQ(lines.StepOn(1), 3);
  EXPECT_EQ(lines.StepBack(3), 1);
  lines.Set(_T("\n\r"));
  EXPECT_EQ(lines.StepOn(0), 1);
  EXPECT_EQ(lines.StepBack(2), 1);
}

TEST_F(HeadlessEditText, StepsPassPairsAsOneAndLoneHalvesAlone) {
  line.Set(pair + pair.Right(1) + pair.Left(1));
  EXPECT_EQ(line.StepOn(0), 2);
  EXPECT_EQ(line.StepBack(2), 0);
  EXPECT_EQ(line.StepOn(2), 3);
  EXPECT_EQ(line.StepBack(3), 2);
  EXPECT_EQ(line.StepOn(3), 4);
  EXPECT_EQ(line.StepBack(4), 3);
}

TEST_F(HeadlessEditText, StepsFromInsideAPairTakeItsHalf) {
  line.Set(pair);
  EXPECT_EQ(line.StepOn(1), 2);
  EXPECT_EQ(line.StepBack(1), 0);
}

TEST_F(HeadlessEditText, StepsEndAtTheTextsEnds) {
  line.Set(_T("abc"));
  EXPECT_EQ(line.StepBack(0), 0);
  EXPECT_EQ(line.StepOn(3), 3);
  EXPECT_EQ(line.StepBack(-5), 0);
  EXPECT_EQ(line.StepOn(99), 3);
  EXPECT_EQ(line.StepBack(99), 2);
  EXPECT_EQ(line.StepOn(-5), 1);
}

TEST_F(HeadlessEditText, WordsAreFoundByTheirStarts) {
  line.Set(_T("KL1  300*600 梁"));
  EXPECT_EQ(line.WordOn(0), 5);
  EXPECT_EQ(line.WordOn(3), 5);
  EXPECT_EQ(line.WordOn(5), 13);
  EXPECT_EQ(line.WordOn(13), 14);
  EXPECT_EQ(line.WordBack(14), 13);
  EXPECT_EQ(line.WordBack(13), 5);
  EXPECT_EQ(line.WordBack(7), 5);
  EXPECT_EQ(line.WordBack(5), 0);
}

TEST_F(HeadlessEditText, WordsAreDividedByTabsAndLineEnds) {
  lines.Set(_T("a\tb\r\nc"));
  EXPECT_EQ(lines.WordOn(0), 2);
  EXPECT_EQ(lines.WordOn(2), 5);
  EXPECT_EQ(lines.WordBack(5), 2);
}

TEST_F(HeadlessEditText, WordsEndAtTheTextsEnds) {
  line.Set(_T(" ab "));
  EXPECT_EQ(line.WordBack(1), 0);
  EXPECT_EQ(line.WordOn(2), 4);
  EXPECT_EQ(line.WordBack(99), 1);
  EXPECT_EQ(line.WordOn(99), 4);
  EXPECT_EQ(line.WordOn(-9), 1);
  EXPECT_EQ(line.WordBack(-9), 0);
}

TEST_F(HeadlessEditText, OneLineHasOneStart) {
  line.Set(_T("a\r\nb"));
  EXPECT_EQ(line.LineStarts(), Starts{0});
  EXPECT_EQ(line.Lines().Text(0), CString(_T("a\r\nb")));
}

TEST_F(HeadlessEditText, AnEmptyTextHasOneEmptyLine) {
  EXPECT_EQ(lines.LineStarts(), Starts{0});
  EXPECT_EQ(lines.Lines().Length(0), 0);
  EXPECT_EQ(lines.Lines().Of(0), 0);
}

TEST_F(HeadlessEditText, LinesEndAtCrLfOnly) {
  lines.Set(_T("ab\r\n\r\nc\nd\re"));
  EXPECT_EQ(lines.LineStarts(), (Starts{0, 4, 6}));
  EXPECT_EQ(lines.Lines().Text(0), CString(_T("ab")));
  EXPECT_EQ(lines.Lines().Text(1), CString());
  EXPECT_EQ(lines.Lines().Text(2), CString(_T("c\nd\re")));
}

TEST_F(HeadlessEditText, ALineEndAtTheEndBeginsAnEmptyLine) {
  lines.Set(_T("ab\r\n"));
  EXPECT_EQ(lines.LineStarts(), (Starts{0, 4}));
  EXPECT_EQ(lines.Lines().Length(0), 2);
  EXPECT_EQ(lines.Lines().Length(1), 0);
  EXPECT_EQ(lines.Lines().Of(4), 1);
}

TEST_F(HeadlessEditText, LineOfCountsTheLineEndToItsLine) {
  lines.Set(_T("ab\r\ncd"));
  EXPECT_EQ(lines.Lines().Of(3), 0);
  EXPECT_EQ(lines.Lines().Of(4), 1);
}

TEST_F(HeadlessEditText, LineOfAnswersOutsideTheTextToo) {
  lines.Set(_T("ab\r\ncd"));
  EXPECT_EQ(lines.Lines().Of(99), 1);
  EXPECT_EQ(lines.Lines().Of(-1), -1);
}

TEST_F(HeadlessEditText, LinesThatAreNotHaveNoStartAndNoText) {
  lines.Set(_T("ab\r\ncd"));
  for (const int none : {-1, 2}) {
    EXPECT_EQ(lines.Lines().Start(none), -1);
    EXPECT_EQ(lines.Lines().Length(none), 0);
    EXPECT_EQ(lines.Lines().Text(none), CString());
  }
}

TEST_F(HeadlessEditText, WrapsBehindBlanks) {
  lines.wrap_width = 4 * kNarrow;
  lines.Set(_T("ab cd ef"));
  EXPECT_EQ(lines.LineStarts(), (Starts{0, 3, 6}));
  EXPECT_EQ(lines.Lines().Text(0), CString(_T("ab ")));
}

TEST_F(HeadlessEditText, WrapsAtTheWidthAndNotBelow) {
  lines.Set(_T("abcd"));
  lines.wrap_width = 4 * kNarrow;
  EXPECT_EQ(lines.LineStarts(), Starts{0});
  lines.wrap_width = 4 * kNarrow - 1;
  EXPECT_EQ(lines.LineStarts(), (Starts{0, 3}));
  lines.wrap_width = 0;
  EXPECT_EQ(lines.LineStarts(), Starts{0});
}

TEST_F(HeadlessEditText, WrapsLongWordsBetweenLetters) {
  lines.wrap_width = 3 * kNarrow;
  lines.Set(_T("a bcdefgh"));
  EXPECT_EQ(lines.LineStarts(), (Starts{0, 2, 5, 8}));
}

TEST_F(HeadlessEditText, BlanksHangOverTheWidth) {
  lines.wrap_width = 2 * kNarrow;
  lines.Set(_T("ab    c"));
  EXPECT_EQ(lines.LineStarts(), (Starts{0, 6}));
}

TEST_F(HeadlessEditText, WrapsBeforeIdeographs) {
  lines.wrap_width = 4 * kNarrow;
  lines.Set(_T("ab梁板c"));
  EXPECT_EQ(lines.LineStarts(), (Starts{0, 3}));
}

TEST_F(HeadlessEditText, WrapsPairsAsWideLettersAndWhole) {
  lines.wrap_width = 4 * kNarrow;
  lines.Set(pair + pair + pair);
  EXPECT_EQ(lines.LineStarts(), (Starts{0, 4}));
  lines.wrap_width = 4 * kNarrow - 1;
  EXPECT_EQ(lines.LineStarts(), (Starts{0, 2, 4}));
}

TEST_F(HeadlessEditText, ALetterWiderThanTheWidthHasItsLine) {
  lines.wrap_width = 1;
  lines.Set(_T("a梁") + pair);
  EXPECT_EQ(lines.LineStarts(), (Starts{0, 1, 2}));
}

TEST_F(HeadlessEditText, WrapsEachLineForItself) {
  lines.wrap_width = 2 * kNarrow;
  lines.Set(_T("abc\r\nde\r\nfgh"));
  EXPECT_EQ(lines.LineStarts(), (Starts{0, 2, 5, 9, 11}));
  EXPECT_EQ(lines.Lines().Text(1), CString(_T("c")));
  EXPECT_EQ(lines.Lines().Text(2), CString(_T("de")));
}

TEST_F(HeadlessEditText, ALoneLineFeedBeforeABreakIsALetter) {
  lines.wrap_width = kNarrow;
  lines.Set(_T("\nab"));
  EXPECT_EQ(lines.LineStarts(), (Starts{0, 1, 2}));
  EXPECT_EQ(lines.Lines().Length(0), 1);
}

TEST_F(HeadlessEditText, OneLineDoesNotWrap) {
  line.wrap_width = kNarrow;
  line.Set(_T("abc"));
  EXPECT_EQ(line.LineStarts(), Starts{0});
}

TEST_F(HeadlessEditText, AboveKeepsThePlaceInTheLine) {
  lines.Set(_T("abc\r\ndef\r\nghi"));
  EXPECT_EQ(lines.Above(7, 1), 2);
  EXPECT_EQ(lines.Above(7, -1), 12);
  EXPECT_EQ(lines.Above(12, 2), 2);
  EXPECT_EQ(lines.Above(7, 0), 7);
}

TEST_F(HeadlessEditText, AboveStopsAtTheEndOfAShorterLine) {
  lines.Set(_T("a\r\nbcd\r\n"));
  EXPECT_EQ(lines.Above(6, 1), 1);
  EXPECT_EQ(lines.Above(6, -1), 8);
}

TEST_F(HeadlessEditText, AboveTheFirstAndBelowTheLastLineStays) {
  lines.Set(_T("ab\r\ncd"));
  EXPECT_EQ(lines.Above(1, 1), 1);
  EXPECT_EQ(lines.Above(5, -1), 5);
  EXPECT_EQ(lines.Above(-3, -1), -3);
}

TEST_F(HeadlessEditText, AboveStaysInAShorterLineThatTheWidthBroke) {
  lines.wrap_width = 4 * kNarrow;
  lines.Set(_T("ab cdef"));
  ASSERT_EQ(lines.LineStarts(), (Starts{0, 3}));
  EXPECT_EQ(lines.Lines().Of(lines.Above(7, 1)), 0);
  EXPECT_EQ(lines.Above(7, 1), 2);
}
