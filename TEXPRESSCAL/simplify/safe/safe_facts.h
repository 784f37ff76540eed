#pragma once

#include <vector>

#include "TEXPRESSCAL/simplify/safe/safe_tree.h"

namespace lorv {

// What holds for a node whatever its variables are, finite values being given.
struct SafeFacts {
  bool has_name = false;
  bool exact = false;  // made of numbers by operations that give the same bits on every system
  bool pure = false;   // its evaluation never sets an error
  double bound = 0;    // the greatest magnitude; infinity if it is not known, or may be NaN
  bool not_minus_zero = false;
  bool zero = false;       // it is 0 or -0
  bool plus_zero = false;  // it is 0
  bool numeric = true;     // it is a number, not a text
  bool boolean = false;    // it is 0 or 1
  // What its surroundings see of it:
  bool zero_sign_unseen = false;  // whether it is 0 or -0 makes no difference
  bool text_seen = false;         // whether it is a number or a text makes one
};

// The facts of every node. Values reach a formula as text, "-2" and "1/3" among them: a name's facts allow
// for the operators that come with it. With `ignore_zero_sign` the sign of a zero that the formula gives is
// unseen.
std::vector<SafeFacts> FactsOf(const SafeTree& tree, bool ignore_zero_sign);

}  // namespace lorv
