#pragma once

#include <string>
#include <vector>

#include "tests/reference/formula_maker.h"

// One formula that is evaluated again and again while its values change: with names that stand against digits
// and against each other, and values whose texts have every length.
//
// A formula set again is evaluated by other means than one set for the first time, and many rows by others
// still. All of them must agree, and a value's length decides in which places of the text a name is found: so
// these are the cases in which one of the ways could go wrong alone.
namespace lorv::test {

struct RepeatedCase {
  // A turn of the one object that lives through the whole case.
  struct Round {
    std::vector<double> values;     // of the names
    bool values_first = false;      // set before the formula is
    bool small_letters = false;     // the formula is typed in small letters
    bool asks_text = false;         // the evaluated text is asked for
    bool calculates_twice = false;  // without setting the formula in between
    bool other_before = false;      // another formula is evaluated first
    bool clears_before = false;     // all values are removed first
    bool is_copied_before = false;  // the object is assigned to a new one, which goes on
  };

  Text formula;
  std::vector<Text> keywords;
  std::vector<Text> names;
  std::vector<Round> rounds;
  // Rows of the rounds' values in turn; a name with one value in all rounds may be no column of them.
  std::size_t rows = 0;
  bool keeps_fixed_values_apart = false;
};

RepeatedCase MakeRepeatedCase(ChoiceSource& source);

// Evaluates the case by a new calculator for each round, by one calculator for all of them, as rows, and by
// the reference; the first difference in words, empty when all agree.
std::string RepeatedDifference(const RepeatedCase& made);

std::string Shown(const RepeatedCase& made);
RepeatedCase Shrunk(RepeatedCase made);

}  // namespace lorv::test
