#pragma once

#include <string>
#include <vector>

#include "framework/text/text_compare.h"

namespace lorv {

// A formula's text in which placeholders for values are put in place of the names, and that knows of each
// unit which of them it belongs to. It is edited like the other texts (text_edit.h), by the very substitution
// that puts values in, so names are found where that finds them; what depends on the length or the units of a
// value is asked here, and limits which values fit the plan.
class PlaceholderEdit {
 public:
  static constexpr int kNoPlace = -1;

  // A stretch that one value has taken.
  struct Place {
    std::size_t name;  // as given to BeginName
    std::size_t start;
    std::size_t end;
    bool is_behind_digit;  // a "*" that came with the value stands before it

    // Where the name was found.
    std::size_t Hit() const { return is_behind_digit ? start - 1 : start; }
  };

  explicit PlaceholderEdit(TextView text) : text_(text), places_(text.size(), kNoPlace) {}

  LPCTSTR Text() const { return text_.c_str(); }
  LPTSTR Writable() { return text_.data(); }
  std::size_t Length() const { return text_.size(); }

  // From now on every replacement puts in a value of this name.
  void BeginName(std::size_t name) {
    name_ = name;
    taking_values_ = true;
  }
  // From now on replacements have nothing to do with values.
  void EndNames() { taking_values_ = false; }

  void Splice(std::size_t at, std::size_t count, TextView fresh) {
    text_.replace(at, count, fresh);
    const auto begin = places_.begin() + static_cast<std::ptrdiff_t>(at);
    places_.insert(places_.erase(begin, begin + static_cast<std::ptrdiff_t>(count)), fresh.size(), kNoPlace);
    copies_text_ = copies_text_ || count == 0;
    if (taking_values_) TakeValue(at, fresh);
  }

  // The stretches of all values in the order of the text.
  std::vector<Place> Places() const;

  // The least number of units that can lie between where the current name was found and where it is found
  // next, a "*" that comes with the value included and the value itself not, however short the other values
  // are; `none` where it is never found again.
  std::size_t LeastGap(TextView name, std::size_t none) const;

  // Text was put in between units: it may repeat a value.
  bool CopiesText() const { return copies_text_; }
  // A value was put behind a unit with which it could be taken together for another name.
  bool IsDoubtful() const { return doubtful_; }

 private:
  // A value that was put in.
  struct Taken {
    std::size_t name;
    bool is_behind_digit;
  };

  void TakeValue(std::size_t at, TextView fresh);

  std::basic_string<TCHAR> text_;
  std::vector<int> places_;  // of each unit; kNoPlace or an index into taken_
  std::vector<Taken> taken_;
  std::size_t name_ = 0;
  bool taking_values_ = false;
  bool copies_text_ = false;
  bool doubtful_ = false;
};

}  // namespace lorv
