#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>

#include "framework/text/utf8.h"

namespace lorv {

// What is known of texts in a font, found by value, so that a text is measured once and not for every cell of
// every painting. What was asked for last is kept: up to twice kMaxTexts, of at most kLongestText units each.
// One thread at a time.
template <class Value>
class KeptTexts {
 public:
  static constexpr std::size_t kMaxTexts = 4096;
  static constexpr std::size_t kLongestText = 128;

  // The value, made by `make` where there is none; good until the next call. Null for a text too long.
  template <class Make>
  Value* Of(std::uint32_t face, TextView text, Make make) {
    if (text.size() > kLongestText) return nullptr;
    const View view{face, text};
    if (const auto known = young_.find(view); known != young_.end()) return &known->second;
    if (young_.size() >= kMaxTexts) {
      old_ = std::move(young_);
      young_.clear();
    }
    if (const auto known = old_.find(view); known != old_.end())
      return &young_.insert(old_.extract(known)).position->second;
    return &young_.emplace(Key{face, Text(text)}, make()).first->second;
  }
  std::size_t Count() const { return young_.size() + old_.size(); }

 private:
  using Text = std::basic_string<TextView::value_type>;
  struct View {
    std::uint32_t face;
    TextView text;
  };
  struct Key {
    std::uint32_t face;
    Text text;
  };
  static View ViewOf(const View& view) { return view; }
  static View ViewOf(const Key& key) { return {key.face, key.text}; }
  struct Hash {
    using is_transparent = void;
    template <class Any>
    std::size_t operator()(const Any& any) const {
      const View view = ViewOf(any);
      return std::hash<TextView>()(view.text) * 31 + view.face;
    }
  };
  struct Equal {
    using is_transparent = void;
    template <class A, class B>
    bool operator()(const A& a, const B& b) const {
      return ViewOf(a).face == ViewOf(b).face && ViewOf(a).text == ViewOf(b).text;
    }
  };
  using Values = std::unordered_map<Key, Value, Hash, Equal>;

  // When the young half is full it becomes the old one, and the old one goes.
  Values young_;
  Values old_;
};

}  // namespace lorv
