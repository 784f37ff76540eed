#pragma once

#include <functional>
#include <optional>

#include "tools/lorv/formula/formula_fault.h"

namespace lorv::tool {

// What a name in a formula stands for.
struct Symbol {
  enum Kind {
    kUnknown,
    kDimension,  // a number of the component, by index
    kResult,     // an earlier quantity of the component, by index
    kText,       // words of the component, by column
    kConstant,   // a number known from the start
  };
  Kind kind = kUnknown;
  std::size_t index = 0;
  double constant = 0;
};

// What a formula takes from the component at hand. Nothing stands for a value that is missing.
class ValueSource {
 public:
  virtual ~ValueSource() = default;
  virtual std::optional<double> DimensionOf(std::size_t index) = 0;
  virtual std::optional<double> ResultOf(std::size_t index) = 0;
  virtual CString TextOf(std::size_t column) = 0;
};

// How the work of a formula ended.
struct Outcome {
  enum State { kEvaluated, kMissing, kFaulty };
  State state = kEvaluated;
  double value = 0;
  Fault fault;  // of the formula as typed, where it was not evaluated
  // A number that hardly is the one that was meant.
  std::optional<Fault> doubt = std::nullopt;
};

// What a name stands for, by its key.
using Lookup = std::function<Symbol(const CString& key)>;

}  // namespace lorv::tool
