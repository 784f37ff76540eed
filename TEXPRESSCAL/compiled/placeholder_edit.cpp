#include "TEXPRESSCAL/compiled/placeholder_edit.h"

#include <algorithm>

#include "TEXPRESSCAL/text/unit_search.h"

// The text of a plan in the making: names replaced by placeholders, and for every unit the value that it
// belongs to. It is edited through the same interface as ordinary texts, so the substitution runs on it
// unchanged, and what it would do to a shorter or negative value is asked here.

namespace lorv {
namespace {

constexpr TCHAR kFirstBeyondAscii = 0x80;

}  // namespace

// The "*" that a digit before the name asks for belongs to no value: it is the same for all of them. Behind a
// unit beyond ASCII a value's sign decides whether that unit still ends a name, which no plan can know.
void PlaceholderEdit::TakeValue(std::size_t at, TextView fresh) {
  const std::size_t end = at + fresh.size();
  const bool is_behind_digit = fresh.front() == '*';
  if (is_behind_digit) ++at;
  if (at > 0 && text_[at - 1] >= kFirstBeyondAscii) doubtful_ = true;
  std::fill(places_.begin() + static_cast<std::ptrdiff_t>(at),
            places_.begin() + static_cast<std::ptrdiff_t>(end), static_cast<int>(taken_.size()));
  taken_.push_back({name_, is_behind_digit});
}

// Runs of units of one value. Two values side by side are two runs, as each value has a number of its own.
std::vector<PlaceholderEdit::Place> PlaceholderEdit::Places() const {
  std::vector<Place> places;
  for (std::size_t at = 0; at < places_.size(); ++at) {
    if (places_[at] == kNoPlace) continue;
    if (at == 0 || places_[at] != places_[at - 1]) {
      const Taken& taken = taken_[static_cast<std::size_t>(places_[at])];
      places.push_back({taken.name, at, at, taken.is_behind_digit});
    }
    places.back().end = at + 1;
  }
  return places;
}

// The substitution goes on as many units behind a hit as the name has, however long the value is. So a hit is
// missed if the "*", the value and what follows up to the next hit are shorter than the name. What is asked
// here is the least that the rest can come to; the plan then asks for values that are long enough.
std::size_t PlaceholderEdit::LeastGap(TextView name, std::size_t none) const {
  const std::vector<Place> places = Places();
  std::size_t least = none;
  for (auto place = places.begin(); place != places.end(); ++place) {
    if (place->name != name_) continue;
    std::size_t next = FindText(Text(), Length(), place->end, name);
    const auto again =
        std::find_if(place + 1, places.end(), [this](const Place& other) { return other.name == name_; });
    // The search found the name itself: the "*" that its value brought was not there yet.
    if (again != places.end()) next = std::min(next, again->Hit());
    if (next == TextView::npos) continue;
    std::size_t gap = next - place->end + (place->start - place->Hit());
    // Another value in between has one unit at least.
    for (auto other = place + 1; other != again && other->start < next; ++other)
      gap -= other->end - other->start - 1;
    least = std::min(least, gap);
  }
  return least;
}

}  // namespace lorv
