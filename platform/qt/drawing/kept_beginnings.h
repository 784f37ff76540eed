#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>

#include "framework/text/char_class.h"
#include "framework/text/utf8.h"

namespace lorv {

// Characters of scripts that run from left to right and are set letter by letter: Latin, Greek and Cyrillic
// without marks that combine, Chinese, and the wide forms.
inline bool AreSetSingly(TextView text) {
  return std::all_of(text.begin(), text.end(), [](TextView::value_type unit) {
    return (unit >= 0x20 && unit < 0x7F) || (unit > 0xA0 && unit < 0x300) ||
           (unit >= 0x370 && unit < 0x483) || (unit >= 0x3000 && unit < 0xA000) ||
           (unit >= 0xFF00 && unit < 0xFFE0);
  });
}

// The beginning of a name that ends in digits, such as "KL" of "KL12", where its characters are set singly.
// Empty for every other text.
inline TextView BeginningOfName(TextView text) {
  constexpr std::size_t kLongest = 64;  // units
  std::size_t length = text.size();
  while (length > 0 && IsDigit(text[length - 1])) --length;
  const TextView beginning = text.substr(0, length);
  const bool fits = length < text.size() && length <= kLongest;
  return fits && AreSetSingly(beginning) ? beginning : TextView();
}

// What is known of names that begin alike, made once many of them were met: what it takes to learn it would
// be wasted on a few.
//
// Memory: kMost beginnings are remembered, then the remembering begins anew. One thread at a time.
template <class Known>
class KeptBeginnings {
 public:
  static constexpr std::size_t kMost = 256;
  static constexpr int kMany = 32;

  // Null until the beginning was met kMany times; then what `make` gives. Good until the next call.
  template <class Make>
  Known* Met(TextView beginning, Make make) {
    auto found = names_.find(beginning);
    if (found == names_.end()) {
      if (names_.size() >= kMost) names_.clear();
      found = names_.emplace(beginning, Name()).first;
    }
    Name& name = found->second;
    if (name.known == nullptr && ++name.met >= kMany) name.known = make();
    return name.known.get();
  }
  template <class Change>
  void ForEach(Change change) {
    for (auto& [beginning, name] : names_)
      if (name.known != nullptr) change(*name.known);
  }

 private:
  struct Name {
    int met = 0;
    std::unique_ptr<Known> known;
  };
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(TextView text) const { return std::hash<TextView>()(text); }
  };

  std::unordered_map<std::basic_string<TextView::value_type>, Name, Hash, std::equal_to<>> names_;
};

}  // namespace lorv
