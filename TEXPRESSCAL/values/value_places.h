#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "TEXPRESSCAL/text/text_edit.h"
#include "TEXPRESSCAL/text_rewriting.h"

namespace lorv {

// Where in a formula values stand for names. The direct evaluation notes them and goes on; the text is
// written only when somebody asks for it, which hardly anybody does. Values are noted as well: what is
// written are those of the evaluation, however late it is asked for.
class ValuePlaces {
 public:
  // Values of a map with more entries are not noted.
  static constexpr std::size_t kMaxEntries = 128;

  struct Place {
    std::uint16_t start;
    std::uint8_t length;
    std::uint8_t entry;
  };

  void Clear() { count_ = 0; }
  void Add(std::size_t start, std::size_t length, std::size_t entry, double value) {
    places_[count_++] = {static_cast<std::uint16_t>(start), static_cast<std::uint8_t>(length),
                         static_cast<std::uint8_t>(entry)};
    values_[entry] = value;
  }
  // The last place that the entry's value took before now, which must exist.
  const Place& LastOf(std::size_t entry) const;

  // Puts the values into a copy of the formula.
  void WriteInto(GrowingEdit& text) const;

 private:
  // A name takes a unit, and another one parts it from the next.
  static constexpr std::size_t kMaxPlaces = kMaxFormulaText / 2 + 1;
  static_assert(kMaxFormulaText <= UINT16_MAX);

  std::size_t count_ = 0;
  std::array<Place, kMaxPlaces> places_;
  std::array<double, kMaxEntries> values_;
};

}  // namespace lorv
