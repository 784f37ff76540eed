#include "TEXPRESSCAL/values/value_places.h"

#include "TEXPRESSCAL/values/substitution.h"

// Writes the working text of a directly evaluated formula when somebody asks for it after all: the places and
// values that the evaluation noted, in the order of the text.

namespace lorv {

// Names repeat at short distances, so the search goes backwards.
const ValuePlaces::Place& ValuePlaces::LastOf(std::size_t entry) const {
  std::size_t at = count_ - 1;
  while (places_[at].entry != entry) --at;
  return places_[at];
}

// Places are noted from left to right, which is the order of the text.
void ValuePlaces::WriteInto(GrowingEdit& text) const {
  std::basic_string<TCHAR> written;
  std::size_t from = 0;
  for (std::size_t i = 0; i < count_; ++i) {
    const Place& place = places_[i];
    written.append(text.View().substr(from, place.start - from));
    written.append(ValueText(values_[place.entry]).Plain());
    from = place.start + std::size_t{place.length};
  }
  written.append(text.View().substr(from));
  text.Assign(written);
}

}  // namespace lorv
