#pragma once

#include <string>

#include "framework/native/native_types.h"

// Slow and obvious text helpers of the reference engine. They share no code with the library: a mistake
// there cannot hide here. Texts are 16-bit units; letter case folds for A to Z only.
namespace lorv::reference {

using Text = std::basic_string<TCHAR>;

bool IsLetter(TCHAR c);
bool IsDecimalDigit(TCHAR c);
bool IsNameUnit(TCHAR c);  // letter, digit or "_"

// Up to the first terminator: what a caller's pointer shows.
Text AsPointerText(const Text& text);
Text Upper(const Text& text);
Text FirstTwenty(const Text& text);

// Letter by letter as small letters: negative, zero, positive.
int CompareFolded(const Text& a, const Text& b);
int CompareUnits(const Text& a, const Text& b);

// Orders map keys.
struct FoldedLess {
  bool operator()(const Text& a, const Text& b) const { return CompareFolded(a, b) < 0; }
};

// Blanks, sign, digits with one point, exponent; the longest valid beginning, 0 where there is none.
double ReadNumber(const Text& text);

// A double with at most `digits` decimals, as few as it needs; cut to `size` units.
Text DoubleToText(double value, int digits, bool fixed, int size);

// Conversions as the processor makes them: what does not fit is the smallest integer.
double ThroughInt32(double value);
double ThroughInt64(double value);

// Plain replacement, no edge test, at most 100 or (all == false) one, from unit `from` on.
int ReplacePlain(Text& text, std::size_t from, const Text& old, const Text& fresh, bool all);

}  // namespace lorv::reference
