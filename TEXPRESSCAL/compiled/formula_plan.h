#pragma once

#include <cstddef>
#include <vector>

#include "TEXPRESSCAL/compiled/compiler.h"
#include "TEXPRESSCAL/map_value.h"
#include "TEXPRESSCAL/simd/block_work.h"
#include "TEXPRESSCAL/values/value_reading.h"

namespace lorv {

class PlanReader;

// How to evaluate one formula again and again with other values of the same names, without writing the values
// into the text and parsing it: the outcome is bit for bit what that gives.
//
// Not every formula has a plan, and not every value fits one: where a value can change what the text means
// (inside quotes, beside digits, as a third, too short for its name's next hit to be found) the text has to
// be evaluated. A plan is refused unless all of that is excluded.
class FormulaPlan {
 public:
  FormulaPlan() = default;
  FormulaPlan(const FormulaPlan&) = delete;
  FormulaPlan& operator=(const FormulaPlan&) = delete;

  // A name that occurs in the formula.
  struct Slot {
    std::size_t entry;       // its place among the values' names
    std::size_t least_text;  // a value with a shorter text does not fit
    bool takes_negative;     // else a value with a minus sign does not fit
    bool takes_third;        // else a third does not fit, even in a plan that takes thirds
  };

  // Makes the plan of a formula in capitals for the names of `values`; false if it has none. A third stands
  // in the text as a division: with kFit every value is evaluated as a number and a divisor, which costs
  // time, and is refused where that is not what both kinds of text mean ("A^2").
  enum class Thirds { kDoNotFit, kFit };
  bool Make(TextView formula, const CMapValue& values, Thirds thirds = Thirds::kDoNotFit);

  // Evaluates the plan on the values of the same names. False, with nothing changed, where a value does not
  // fit.
  bool Evaluate(const CMapValue& values, double& result, int& error) {
    if (!Read(reinterpret_cast<const char*>(values.Entries()))) return false;
    result = program_.Evaluate(error);
    return true;
  }

  // Whether a value fits a slot; `reading` is then the number to calculate with.
  static bool Fits(const Slot& slot, double value, double& reading) {
    return ReadsPlainly(value, reading) && (IsFree(slot) || FitsClosely(slot, value));
  }
  // Only the number decides whether a value fits.
  static bool IsFree(const Slot& slot) { return slot.takes_negative && slot.least_text <= 1; }

  // Whether a value fits a slot that is not free, if its number does.
  static bool FitsClosely(const Slot& slot, double value);

  // Of a plan that takes thirds: whether a value fits, and then the number and the divisor to calculate with.
  static bool Reads(const Slot& slot, double value, double& number, double& divisor);

  // In the order of the names.
  const std::vector<Slot>& Slots() const { return slots_; }
  // The values that the last Evaluate was asked for, in the order of the slots.
  const double* Values() const { return values_.data(); }
  // Its first cells are those of the slots' numbers. The slots' divisors begin at FirstDivisor.
  const FormulaProgram& Program() const { return program_; }
  std::size_t FirstDivisor() const { return values_.size(); }

 private:
  // `first` is where the values' entries begin.
  bool Read(const char* first) {
    if (takes_thirds_) return ReadWithThirds(first);
    return read_(first, scattered_) && (close_slots_.empty() || AllFitClosely());
  }
  bool ReadWithThirds(const char* first);
  bool AllFitClosely() const;
  bool MakeProgram(const PlanReader& reader);
  void MakeSlots(const PlanReader& reader, const std::vector<std::size_t>& least_texts);
  int SlotOf(std::size_t name) const;

  bool takes_thirds_ = false;
  std::vector<Slot> slots_;
  std::vector<std::size_t> close_slots_;  // the indexes of those that are not free
  // Where the slots' values stand, in bytes from the first entry; the last place repeated to whole strides.
  std::vector<std::size_t> places_;
  AlignedRow<double> values_;  // of these places
  ScatteredValues scattered_{};
  bool (*read_)(const char* first, const ScatteredValues& scattered) = nullptr;
  FormulaProgram program_;
};

}  // namespace lorv
